// Reads the settings of PIN entry devices (PED).

#include <cstdlib>
#include <cstring>

#include "config/wendrafil_configuration.h"
#include "util/tolk_text.h"

namespace {

constexpr int kHighestId = 65534;

// Returns whether the text is a decimal number of 1 to `longest` characters, sign included.
bool IsNumber(const char* text, std::size_t longest) {
    return text[0] != '\0' && std::strlen(text) <= longest && Tolk_IsIntegerString(text, 0);
}

// Reads "slot:identifier" and overwrites the colon with NUL. Returns false if the text is malformed.
bool ParseSlotItem(char* item, char* colon, int* slot, int* id) {
    *colon = '\0';
    const char* slotText = Tolk_TrimWhiteSpaces(item);
    const char* idText = Tolk_TrimWhiteSpaces(colon + 1);
    if (!IsNumber(slotText, 9) || !IsNumber(idText, 5)) return false;
    *slot = std::atoi(slotText);
    *id = std::atoi(idText);
    return *id <= kHighestId;
}

// Cuts the text at its first comma. Returns the text behind it, or null if there is no comma.
char* SplitAtComma(char* text) {
    char* comma = std::strchr(text, ',');
    if (comma == nullptr) return nullptr;
    *comma = '\0';
    return comma + 1;
}

}  // namespace

int WendrafilConfiguration::PEDTimeout(unsigned long* t1, unsigned long* t2, unsigned long* t3,
                                       unsigned long* t4) const {
    if (t1 == nullptr || t2 == nullptr || t3 == nullptr || t4 == nullptr) return 1;
    *t1 = static_cast<unsigned long>(Number("Orma", "PEDTimeout1", 200, 0));
    *t2 = static_cast<unsigned long>(Number("Orma", "PEDTimeout2", 200, 0));
    *t3 = static_cast<unsigned long>(Number("Orma", "PEDTimeout3", 200, 0));
    *t4 = static_cast<unsigned long>(Number("Orma", "PEDTimeout4", 200, 0));
    return 0;
}

int WendrafilConfiguration::HSMSlot(unsigned int* slot) const {
    if (slot == nullptr) return 1;
    *slot = 0;
    char value[200];
    if (!Text("RemotePed", "HSMSlot", value, sizeof value)) return 1;
    *slot = static_cast<unsigned>(std::atoi(value));
    return 0;
}

unsigned int WendrafilConfiguration::HSMSlot() const {
    unsigned slot = 0;
    HSMSlot(&slot);
    return slot;
}

int WendrafilConfiguration::PEDId(unsigned int* id) const {
    char value[200];
    unsigned short found = 0;
    if (id == nullptr || !Text("Orma", "PEDId", value, sizeof value)) return 1;
    if (!ParsePedIdString(value, 0, nullptr, &found)) return 1;
    *id = found;
    return 0;
}

unsigned int WendrafilConfiguration::PEDId() const {
    unsigned id = 0;
    PEDId(&id);
    return id;
}

int WendrafilConfiguration::PEDIdForSlot(unsigned int slot, unsigned short* id) const {
    char value[2048];
    if (!Text("Orma", "PEDId", value, sizeof value)) return 1;
    // COMPAT: the second parse sees the text that the first one has cut.
    return !ParsePedIdString(value, slot, id, nullptr) && !ParsePedIdString(value, slot, nullptr, id);
}

int WendrafilConfiguration::ParsePedIdString(char* text, unsigned int slot, unsigned short* slotId,
                                             unsigned short* defaultId) {
    if (slotId == nullptr && defaultId == nullptr) return 0;
    bool needsSlot = slotId != nullptr;
    bool needsDefault = defaultId != nullptr;
    if (needsSlot) *slotId = 0;
    if (needsDefault) *defaultId = 0;

    char* next = nullptr;
    for (char* item = text; item != nullptr && (needsSlot || needsDefault); item = next) {
        next = SplitAtComma(item);
        char* colon = std::strchr(item, ':');
        if (colon != nullptr && slotId != nullptr) {
            int itemSlot = 0;
            int id = 0;
            if (!ParseSlotItem(item, colon, &itemSlot, &id)) return 0;
            if (static_cast<unsigned>(itemSlot) != slot) continue;
            *slotId = static_cast<unsigned short>(id);
            needsSlot = false;
        } else if (colon == nullptr && defaultId != nullptr) {
            const char* idText = Tolk_TrimWhiteSpaces(item);
            if (!needsDefault || !IsNumber(idText, 5)) return 0;
            const int id = std::atoi(idText);
            if (id > kHighestId) return 1;  // COMPAT: it is found, and its value is 0
            *defaultId = static_cast<unsigned short>(id);
            needsDefault = false;
        }
    }
    return !needsSlot && !needsDefault;
}
