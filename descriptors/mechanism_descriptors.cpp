#include "descriptors/mechanism_descriptors.h"

#include <cstdint>

#include "descriptors/call_event.h"
#include "descriptors/event_names.h"
#include "functions/pkcs11_names.h"
#include "host/readable_memory.h"
#include "util/json_writer.h"

using namespace ckscribe;

MechanismDescriptor::MechanismDescriptor(const CK_MECHANISM* mechanism) {
    CK_MECHANISM copy;
    if (!CopyReadable(mechanism, &copy, sizeof copy)) return;
    isGiven = true;
    type = copy.mechanism;
    parameter.SetValue(copy.pParameter, copy.ulParameterLen);
}

void MechanismDescriptor::PrintParameters(RecordText& out, int indent) const {
    // COMPAT: the old format opens no parenthesis although it closes one, because readers of the log expect
    // this text.
    if (UseNewLogFormat()) out.Append('(');
    out.Append(GetMechanismType(type));
    out.Append(',');
    parameter.PrintDescription(out, indent, nullptr);
    out.Append(')');
    out.Flush();
}

MechInfoDescriptor::MechInfoDescriptor(const CK_MECHANISM_INFO* source) {
    isGiven = CopyReadable(source, &info, sizeof info);
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

// Writes no members if the mechanism could not be read: it has no type then.
void MechanismDescriptor::WriteEventMembers(JsonWriter& json) const {
    if (!isGiven) return;
    ckscribe::WriteMechanismType(json, type);
    json.Key("parameter");
    json.BeginObject();
    parameter.WriteEventMembers(json);
    json.EndObject();
}

void MechanismDescriptor::TellSubject(CallSubject& subject) const {
    if (isGiven) subject.Tell(CallSubject::kMechanism, &CallSubject::mechanism, type);
}

void MechInfoDescriptor::WriteEventMembers(JsonWriter& json) const {
    if (!isGiven || AreOutputsLeftOut()) return;
    json.Key("ulMinKeySize");
    json.Number(info.ulMinKeySize);
    json.Key("ulMaxKeySize");
    json.Number(info.ulMaxKeySize);
    json.Key("flags");
    json.Number(info.flags);
}
