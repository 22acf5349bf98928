#include "descriptors/value_format.h"

#include <initializer_list>

std::string_view GetValueFormat(ValueFormat format) {
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
        if (GetValueFormat(format) == name) return format;
    }
    return ValueFormat{0};
}
