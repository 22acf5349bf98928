// AbstractDescriptor is the base class of every part of a log record. It also writes whole records to the
// log.
//
// A record is a small tree of descriptors: one command at its root, one typed child for each argument or
// returned structure. A tree is built, captured and destroyed by one record builder; descriptors copy every
// value that they describe and are never shared. All of it runs under the one record lock (see
// host/record_lock.h), so the class-wide state below needs no lock of its own.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdio>
#include <string_view>

#include "descriptors/descriptor_type.h"
#include "descriptors/log_settings.h"
#include "descriptors/record_text.h"
#include "descriptors/tree_memory.h"
#include "host/append_file.h"
#include "host/record_lock.h"

namespace ckscribe {
class JsonWriter;
struct CallEvent;
struct CallSubject;
}  // namespace ckscribe

class AbstractDescriptor {
public:
    static constexpr std::size_t kNameLength = 32;

    // `name` may be null. The descriptor keeps the first 32 characters of it.
    explicit AbstractDescriptor(const char* name = nullptr);
    virtual ~AbstractDescriptor();
    AbstractDescriptor(const AbstractDescriptor&) = delete;
    AbstractDescriptor& operator=(const AbstractDescriptor&) = delete;

    static void* operator new(std::size_t size) { return ckscribe::TreeMemory::Take(size); }
    static void operator delete(void* memory, std::size_t size) {
        ckscribe::TreeMemory::GiveBack(memory, size);
    }

    virtual int Type() const { return ckscribe::kUnknownDescriptor; }

    // Prints the whole descriptor: its place (in the old format a new line and `indent` blanks), label, value
    // and content. `suffix` ends the content; it may be null.
    virtual void PrintDescription(ckscribe::RecordText& out, int indent, const char* suffix) const;
    // Prints the descriptor's own value.
    virtual void PrintParameters(ckscribe::RecordText& out, int indent) const;
    // Prints what the descriptor holds, then `suffix` unless it is null.
    virtual void PrintContent(ckscribe::RecordText& out, int indent, const char* suffix) const;
    // Prints the label that stands in front of the value.
    virtual std::string_view GetDescriptorType() const;

    // Writes the descriptor into an event as an object of JSON.
    void WriteEvent(ckscribe::JsonWriter& json) const;
    // Writes the members of that object that follow its "kind" and "name".
    virtual void WriteEventMembers(ckscribe::JsonWriter& json) const;
    // Writes the value as an element of a list, or as a member of a structure that gives it a name.
    virtual void WriteEventValue(ckscribe::JsonWriter& json) const;
    // Returns the descriptor's kind in events. It is the label of the old format unless a class says
    // otherwise.
    virtual std::string_view EventKind() const { return ckscribe::OldFormatLabel(Type()); }
    // Returns the descriptor's "name" in events: its label in the new format, unless the type fixes that
    // label. A '=' at the end of the label does not belong to the name.
    virtual std::string_view EventName() const;
    // Notes which slot, session, object, user or mechanism the descriptor stands for, if it stands for one.
    virtual void TellSubject(ckscribe::CallSubject& subject) const;

    // Prints the same text straight to a stdio stream. The stream is flushed wherever the descriptors flush.
    void PrintDescription(std::FILE* stream, int indent, const char* suffix) const;

    // Prints this tree as one record. One append hands the whole text to the operating system before this
    // function returns. It does nothing while no log is open, and it reports no error of the log. If it
    // throws std::bad_alloc, it has written nothing.
    //
    // While events are written, the tree becomes an event in the same way.
    void Capture() const;

    const char* Name() const { return name; }

    static void InitializeClass() CKSCRIBE_NEEDS(ckscribe::theRecordLock);
    // Closes the log. If no log is open, reports the descriptors that still live to the error file.
    static void TerminateClass() CKSCRIBE_NEEDS(ckscribe::theRecordLock);
    // Opens the log for appending in place of the one that is open. Reports a failure to the error file.
    static void OpenCaptureStream(const unsigned char* path) CKSCRIBE_NEEDS(ckscribe::theRecordLock);
    static void CloseCaptureStream() CKSCRIBE_NEEDS(ckscribe::theRecordLock);

    static unsigned uInstanceCount;                // descriptors alive
    static ckscribe::AppendFile& fpCaptureStream;  // the open log, or none
    // This is 1 while fpCaptureStream is open. Threads also read it without the lock.
    static std::atomic<int> isStreamOpen;

protected:
    // Writes one event of the call that is being recorded. Writes nothing if the tree is not a whole record.
    virtual void CaptureEvent(ckscribe::CallEvent& event) const;

    static void PrintIndent(ckscribe::RecordText& out, int indent);
    // Prints a new line and its indent in the old format, and nothing in the new one.
    static void PrintNewLine(ckscribe::RecordText& out, int indent);

private:
    unsigned char nameLength = 0;
    char name[kNameLength + 1];
};
