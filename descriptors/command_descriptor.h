// A CommandDescriptor is the root of every record. It shows the function, its specifier, start or end, and
// the result.
#pragma once

#include "descriptors/descriptor_composite.h"
#include "functions/command_type.h"

class CommandDescriptor : public DescriptorComposite {
public:
    // `rv` is the return value of the function (CK_RV) in an end record. It is 0 in a start record.
    CommandDescriptor(CommandType type, CommandPhase phase, unsigned long rv)
        : CommandDescriptor(type, CommandSpecifier::kSingle, phase, rv) {}
    CommandDescriptor(CommandType type, CommandSpecifier specifier, CommandPhase phase, unsigned long rv)
        : type(type), specifier(specifier), phase(phase), rv(rv) {}

    int Type() const override { return ckscribe::kCommand; }
    // Prints the head of the record: everything between the label and the brace.
    void PrintParameters(ckscribe::RecordText& out, int indent) const override;

    // These functions return constant strings. A number without a name gives "UnknownType",
    // "UnknownSpecifier", "UnknownPhase" or, in the new format, "ERR!".
    static std::string_view GetCommandType(CommandType type);
    static std::string_view GetCommandSpecifier(CommandSpecifier specifier);
    static std::string_view GetCommandPhase(CommandPhase phase);

    // These functions find the number of an old-format name. The text must match exactly; any other text
    // gives 5.
    static CommandSpecifier GetCommandSpecifier(const char* name);
    static CommandPhase GetCommandPhase(const char* name);

protected:
    void CaptureEvent(ckscribe::CallEvent& event) const override;

private:
    void PrintNewHead(ckscribe::RecordText& out) const;
    void PrintOldHead(ckscribe::RecordText& out) const;
    void PrintResultName(ckscribe::RecordText& out) const;

    CommandType type;
    CommandSpecifier specifier;
    CommandPhase phase;
    unsigned long rv;
};
