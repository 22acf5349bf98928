// Declares the exported functions of the vendor. They receive rows of words (see front/vendor_words.h).
#pragma once

#include "front/vendor_words.h"

extern "C" {
#define CA_EVERY_ROW(Name) __attribute__((visibility("default"))) ckscribe::VendorExport CA_##Name;
#include "functions/functions.def"
}
