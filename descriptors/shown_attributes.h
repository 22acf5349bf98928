// Shown attributes say what an object is, not what it holds. Records show them even where data are hidden.
#pragma once

#include <cstddef>

namespace ckscribe {

// AttributeForm says how to understand the value of an attribute.
enum class AttributeForm {
    kBytes,       // as text where it is readable
    kId,          // bytes, never understood as text
    kBoolean,     // CK_BBOOL
    kNumber,      // CK_ULONG
    kDate,        // CK_DATE, or nothing
    kMechanisms,  // an array of CK_MECHANISM_TYPE
    kCheckValue,  // three bytes of a check, or nothing
};

struct ShownAttribute {
    // This is also false if an attribute of this type cannot have this size.
    bool isShown;
    AttributeForm form;
};

ShownAttribute ShownAttributeOf(unsigned long type, std::size_t size);

}  // namespace ckscribe
