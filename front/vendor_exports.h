// The exported functions of the vendor, as rows of words (see front/vendor_words.h).
#pragma once

#include "front/vendor_words.h"

extern "C" {
#define CA_EVERY_ROW(Name) __attribute__((visibility("default"))) CK_RV CA_##Name(VENDOR_PARAMETERS);
#include "functions/functions.def"
}
