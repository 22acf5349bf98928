#include "tool/check/function_count.h"

#include <algorithm>
#include <iterator>

#include "functions/function_classes.h"

namespace ckscribe {

namespace {

struct Function {
    int functionClass;
    int level;
};

constexpr int kNeverLogged = 5;  // no level reaches it

constexpr Function kFunctions[] = {
#define C_EVERY_ROW(Name, Type, Class, Level, ...) {Class, Level},
#define CA_LIST_ROW(...) {ALL_FUNC, kNeverLogged},
#define CA_ROW(Name, Type, Class, Level, ...) {Class, Level},
#define CA_BARE_ROW CA_ROW
#include "functions/functions.def"
};

}  // namespace

int ExportedFunctionCount() { return static_cast<int>(std::size(kFunctions)); }

int LoggedFunctionCount(unsigned mask, int level) {
    return static_cast<int>(std::ranges::count_if(kFunctions, [=](const Function& function) {
        return function.level <= level &&
               (mask & static_cast<unsigned>(function.functionClass | ALL_FUNC)) != 0;
    }));
}

}  // namespace ckscribe
