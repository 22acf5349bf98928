#include "descriptors/calendar_text.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "descriptors/record_environment.h"

namespace ckscribe {

namespace {

constexpr std::size_t kTimeLength = sizeof "10:15:30" - 1;
constexpr std::size_t kTimeBegin = sizeof "Sun Nov 15 " - 1;

// The calendar text is computed once a second: the C library takes as long for it as one record takes.
struct {
    std::time_t second = 0;
    bool isZoneNamed = false;
    char zone[64] = "";
    char text[64] = "";
    std::size_t length = 0;  // 0 for nothing yet
} remembered;

// `zone` is the value of TZ; it is null if TZ is not set. A zone whose name does not fit into `remembered` is
// never remembered.
bool IsRemembered(std::time_t second, const char* zone) {
    if (remembered.length == 0 || second != remembered.second || (zone != nullptr) != remembered.isZoneNamed)
        return false;
    return zone == nullptr || std::strcmp(zone, remembered.zone) == 0;
}

void Remember(std::time_t second, const char* zone) {
    // This code calls tzset and localtime_r instead of localtime, whose result belongs to the application.
    tzset();
    std::tm local{};
    if (localtime_r(&second, &local) == nullptr) local = {};
    char text[64];
    if (asctime_r(&local, text) == nullptr) std::strcpy(text, "Thu Jan  1 00:00:00 1970\n");
    remembered.length = std::strcspn(text, "\n");
    std::memcpy(remembered.text, text, remembered.length);
    remembered.second = second;
    remembered.isZoneNamed = zone != nullptr;
    if (zone != nullptr) std::strncpy(remembered.zone, zone, sizeof remembered.zone - 1);
}

}  // namespace

CalendarText CurrentCalendarText() {
    const std::time_t second = recordEnvironment.now();
    const char* const zone = std::getenv("TZ");
    if (!IsRemembered(second, zone)) Remember(second, zone);
    const std::string_view calendar(remembered.text, remembered.length);
    return {calendar.substr(kTimeBegin, kTimeLength), calendar};
}

}  // namespace ckscribe
