#include "descriptors/command_descriptor.h"

#include <cstdint>
#include <string_view>

#include "descriptors/calendar_text.h"
#include "descriptors/call_event.h"
#include "descriptors/record_environment.h"
#include "functions/command_names.h"
#include "functions/pkcs11_names.h"
#include "util/cache_line.h"

using namespace ckscribe;

namespace {

// This stamp is the processor time of the latest start record of any call, in clock ticks. COMPAT: only start
// records of the old format set it, for the whole process. New-format ends show the processor time of the
// process so far. Readers of the log know both figures.
alignas(kCacheLine) std::uint32_t startStamp = 0;

std::uint32_t ClockTicks() { return static_cast<std::uint32_t>(recordEnvironment.processorTime()); }

long TicksSinceStart() { return static_cast<std::int32_t>(ClockTicks() - startStamp); }

}  // namespace

void CommandDescriptor::CaptureEvent(CallEvent& event) const {
    if (phase == CommandPhase::kStart) {
        ckscribe::WriteStartEvent(event, *this);
    } else {
        ckscribe::WriteEndEvent(event, *this, rv);
    }
}

void CommandDescriptor::PrintParameters(RecordText& out, int) const {
    if (UseNewLogFormat()) {
        PrintNewHead(out);
    } else {
        PrintOldHead(out);
    }
}

void CommandDescriptor::PrintNewHead(RecordText& out) const {
    if (phase == CommandPhase::kStart) {
        out.Append('\n');
        out.Flush();
    }
    out.Append('\n');
    out.Append(CurrentCalendarText().time);
    out.Append(' ');
    out.AppendPadded(recordEnvironment.processId(), 5);
    out.Append('-');
    out.AppendPadded(recordEnvironment.threadId(), 3);
    out.Append(':');
    out.Append(GetCommandPhase(phase));
    out.Append(GetCommandType(type));
    if (specifier != CommandSpecifier::kSingle) {
        out.Append('_');
        out.Append(GetCommandSpecifier(specifier));
        out.Flush();
    }
    if (phase != CommandPhase::kStart) {
        const std::string_view failure = rv != 0 ? "***" : "";
        out.Append(' ');
        out.Append(failure);
        PrintResultName(out);
        out.Append(failure);
        out.AppendDecimal(TicksSinceStart());
        out.Append("clks");
    }
    out.Append(' ');
    out.Flush();
}

void CommandDescriptor::PrintOldHead(RecordText& out) const {
    out.Append('(');
    out.Append(GetCommandType(type));
    out.Append(", ");
    out.Append(GetCommandSpecifier(specifier));
    out.Append(", ");
    out.Append(GetCommandPhase(phase));
    if (phase == CommandPhase::kEnd) {
        out.Append(", ");
        PrintResultName(out);
    }
    out.Flush();
    out.Append(") PID:  ");
    out.AppendDecimal(static_cast<long>(recordEnvironment.processId()));
    out.Append("  Time:  ");
    out.Append(CurrentCalendarText().calendar);
    out.Append('\n');
    out.Flush();
    if (phase == CommandPhase::kEnd) {
        out.Append(" // ");
        out.AppendDecimal(TicksSinceStart());
        out.Append(" clock cycles");
        out.Flush();
    } else {
        startStamp = ClockTicks();
    }
}

void CommandDescriptor::PrintResultName(RecordText& out) const {
    const std::string_view name = GetErrorCode(rv);
    out.Append(name);
    if (name != "CKR_UNKNOWN") return;
    out.Append(' ');
    out.AppendHex(rv);
}

std::string_view CommandDescriptor::GetCommandType(CommandType type) { return NameOfCommand(type); }

std::string_view CommandDescriptor::GetCommandSpecifier(CommandSpecifier specifier) {
    return ckscribe::NameOfSpecifier(specifier);
}

CommandSpecifier CommandDescriptor::GetCommandSpecifier(const char* name) {
    return ckscribe::SpecifierOfName(name);
}

std::string_view CommandDescriptor::GetCommandPhase(CommandPhase phase) {
    return UseNewLogFormat() ? NewFormatNameOfPhase(phase) : OldFormatNameOfPhase(phase);
}

CommandPhase CommandDescriptor::GetCommandPhase(const char* name) {
    return ckscribe::PhaseOfOldFormatName(name);
}
