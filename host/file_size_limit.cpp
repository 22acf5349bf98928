#include "host/file_size_limit.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ckscribe {

namespace {

// Returns RLIM_INFINITY if there is no limit.
rlim_t Limit() {
    rlimit limit;
    return getrlimit(RLIMIT_FSIZE, &limit) == 0 ? limit.rlim_cur : RLIM_INFINITY;
}

// Returns where the next write begins.
off_t PlaceOfWrite(int descriptor, const struct stat& status) {
    return (fcntl(descriptor, F_GETFL) & O_APPEND) != 0 ? status.st_size : lseek(descriptor, 0, SEEK_CUR);
}

}  // namespace

bool IsFileSizeLimited() { return Limit() != RLIM_INFINITY; }

std::string_view WithinFileSizeLimit(int descriptor, std::string_view text) {
    const rlim_t limit = Limit();
    struct stat status;
    if (limit == RLIM_INFINITY || fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return text;
    const rlim_t place = static_cast<rlim_t>(PlaceOfWrite(descriptor, status));
    return text.substr(0, limit > place ? static_cast<std::size_t>(limit - place) : 0);
}

}  // namespace ckscribe
