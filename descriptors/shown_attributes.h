// The attributes that tell what an object is and not what it holds. They are shown where data are hidden,
// too.
#pragma once

#include <cstddef>

namespace ckscribe {

// How a value of an attribute is to be understood.
enum class AttributeForm {
    kBytes,       // as text where it is readable
    kId,          // bytes that are no text even if they look like it
    kBoolean,     // CK_BBOOL
    kNumber,      // CK_ULONG
    kDate,        // CK_DATE, or nothing
    kMechanisms,  // an array of CK_MECHANISM_TYPE
    kCheckValue,  // the first three bytes of a check, or nothing
};

struct ShownAttribute {
    bool isShown;  // false as well if an attribute of this type cannot have this size
    AttributeForm form;
};

ShownAttribute ShownAttributeOf(unsigned long type, std::size_t size);

}  // namespace ckscribe
