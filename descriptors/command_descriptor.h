// The root of every record: which function, which part of it, start or end, and its result.
#pragma once

#include "descriptors/descriptor_composite.h"
#include "functions/command_type.h"

class CommandDescriptor : public DescriptorComposite {
public:
    // `rv` is the function's return value (CK_RV) in an end record and 0 in a start record.
    CommandDescriptor(CommandType type, CommandPhase phase, unsigned long rv)
        : CommandDescriptor(type, ckscribe::kSinglePart, phase, rv) {}
    CommandDescriptor(CommandType type, CommandSpecifier specifier, CommandPhase phase, unsigned long rv)
        : type(type), specifier(specifier), phase(phase), rv(rv) {}

    int Type() const override { return kCommand; }
    // The head of the record, everything between the label and the brace.
    void PrintParameters(RecordText& out, int indent) const override;

    // Constant strings; a number without a name gives "UnknownType", "UnknownSpecifier", "UnknownPhase" or,
    // in the new format, "ERR!".
    static std::string_view GetCommandType(CommandType type);
    static std::string_view GetCommandSpecifier(CommandSpecifier specifier);
    static std::string_view GetCommandPhase(CommandPhase phase);

    // The way back, for the names of the old format, compared exactly; 5 for any other text.
    static CommandSpecifier GetCommandSpecifier(const char* name);
    static CommandPhase GetCommandPhase(const char* name);

protected:
    void CaptureEvent(ckscribe::CallEvent& event) const override;

private:
    void PrintNewHead(RecordText& out) const;
    void PrintOldHead(RecordText& out) const;
    void PrintResultName(RecordText& out) const;

    CommandType type;
    CommandSpecifier specifier;
    CommandPhase phase;
    unsigned long rv;
};
