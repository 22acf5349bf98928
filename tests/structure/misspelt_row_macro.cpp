// A row macro whose name is misspelt must not make an empty table.
constexpr const char* kNames[] = {
#define C_EVRY_ROW(Name, ...) #Name,
#include "functions/functions.def"
    "",
};
