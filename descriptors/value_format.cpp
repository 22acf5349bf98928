#include "descriptors/value_format.h"

#include <cstring>
#include <initializer_list>

const char* GetValueFormat(ValueFormat format) {
    switch (format) {
        case kNumeric:
            return "Numeric";
        case kSimpleText:
            return "SimpleText";
        case kRichText:
            return "RichText";
    }
    return "Unknown";
}

ValueFormat GetValueFormat(const char* name) {
    for (const ValueFormat format : {kNumeric, kSimpleText, kRichText}) {
        if (std::strcmp(name, GetValueFormat(format)) == 0) return format;
    }
    return ValueFormat{0};
}
