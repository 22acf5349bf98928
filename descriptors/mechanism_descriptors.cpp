#include "descriptors/mechanism_descriptors.h"

#include <cstdint>

#include "functions/pkcs11_names.h"
#include "host/readable_memory.h"

MechanismDescriptor::MechanismDescriptor(const CK_MECHANISM* mechanism) {
    CK_MECHANISM copy;
    if (!ckscribe::CopyReadable(mechanism, &copy, sizeof copy)) return;
    type = copy.mechanism;
    parameter.SetValue(copy.pParameter, copy.ulParameterLen);
}

void MechanismDescriptor::PrintParameters(RecordText& out, int indent) const {
    // The old format opens no parenthesis although it closes one; kept, log readers expect the text so.
    if (UseNewLogFormat()) out.Append('(');
    out.Append(GetMechanismType(type));
    out.Append(',');
    parameter.PrintDescription(out, indent, nullptr);
    out.Append(')');
    out.Flush();
}

MechInfoDescriptor::MechInfoDescriptor(const CK_MECHANISM_INFO* source) {
    ckscribe::CopyReadable(source, &info, sizeof info);
}

void MechInfoDescriptor::PrintParameters(RecordText& out, int) const {
    out.Append('(');
    out.AppendDecimal(info.ulMinKeySize);
    out.Append(',');
    out.AppendDecimal(info.ulMaxKeySize);
    out.Append(',');
    out.AppendHex(static_cast<std::uint32_t>(info.flags));
    out.Append(')');
}
