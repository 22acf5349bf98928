#include "descriptors/value_format.h"

#include <initializer_list>

std::string_view GetValueFormat(ValueFormat format) {
    switch (format) {
        case ValueFormat::kNumeric:
            return "Numeric";
        case ValueFormat::kSimpleText:
            return "SimpleText";
        case ValueFormat::kRichText:
            return "RichText";
    }
    return "Unknown";
}

ValueFormat GetValueFormat(const char* name) {
    for (const ValueFormat format :
         {ValueFormat::kNumeric, ValueFormat::kSimpleText, ValueFormat::kRichText}) {
        if (GetValueFormat(format) == name) return format;
    }
    return ValueFormat{0};
}
