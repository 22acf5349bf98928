// The base of everything that a log record is made of, and the stream into which whole records go.
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

    // `name` may be null; of a longer one the first 32 characters are kept.
    explicit AbstractDescriptor(const char* name = nullptr);
    virtual ~AbstractDescriptor();
    AbstractDescriptor(const AbstractDescriptor&) = delete;
    AbstractDescriptor& operator=(const AbstractDescriptor&) = delete;

    static void* operator new(std::size_t size) { return TreeMemory::Take(size); }
    static void operator delete(void* memory, std::size_t size) { TreeMemory::GiveBack(memory, size); }

    virtual int Type() const { return kUnknownDescriptor; }

    // The whole descriptor: its place (old format: a new line and `indent` blanks), label, value, content.
    // `suffix` may be null; it ends the content.
    virtual void PrintDescription(RecordText& out, int indent, const char* suffix) const;
    // The descriptor's own value.
    virtual void PrintParameters(RecordText& out, int indent) const;
    // What the descriptor holds, then `suffix` unless it is null.
    virtual void PrintContent(RecordText& out, int indent, const char* suffix) const;
    // The label in front of the value.
    virtual std::string_view GetDescriptorType() const;

    // The third face of a descriptor, for events: an object of JSON.
    void WriteEvent(ckscribe::JsonWriter& json) const;
    // The members of that object after its "kind" and "name".
    virtual void WriteEventMembers(ckscribe::JsonWriter& json) const;
    // The value as an element of a list, or as a member of a structure that gives it a name.
    virtual void WriteEventValue(ckscribe::JsonWriter& json) const;
    // The descriptor's kind in events; its label in the old format unless it has another one.
    virtual std::string_view EventKind() const { return OldFormatLabel(Type()); }
    // The descriptor's "name" in events: its label in the new format, if that is not fixed by the type. An
    // '=' at its end is no part of the name.
    virtual std::string_view EventName() const;
    // Says which slot, session, object, user or mechanism the descriptor stands for, if for any.
    virtual void TellSubject(ckscribe::CallSubject& subject) const;

    // The same text straight to a stdio stream, which is flushed wherever the descriptors flush.
    void PrintDescription(std::FILE* stream, int indent, const char* suffix) const;

    // Prints this tree as one record: the whole text reaches the operating system with one append before
    // this returns. Nothing happens while no log is open; errors of the log are silent. Throws
    // std::bad_alloc, and then has written nothing.
    //
    // While events are written, the tree becomes one of them in the same way.
    void Capture() const;

    const char* Name() const { return name; }

    static void InitializeClass() CKSCRIBE_NEEDS(ckscribe::theRecordLock);
    // Closes the log. With no log open, descriptors that still live are reported to the error file.
    static void TerminateClass() CKSCRIBE_NEEDS(ckscribe::theRecordLock);
    // Opens the log for appending in place of the one that is open; a failure goes to the error file.
    static void OpenCaptureStream(const unsigned char* path) CKSCRIBE_NEEDS(ckscribe::theRecordLock);
    static void CloseCaptureStream() CKSCRIBE_NEEDS(ckscribe::theRecordLock);

    static unsigned uInstanceCount;                // descriptors alive
    static ckscribe::AppendFile& fpCaptureStream;  // the open log, or none
    static std::atomic<int> isStreamOpen;  // 1 while fpCaptureStream is open; read without the lock too

protected:
    // One event of the call that is being recorded; nothing if the tree is no whole record.
    virtual void CaptureEvent(ckscribe::CallEvent& event) const;

    static void PrintIndent(RecordText& out, int indent);
    static void PrintNewLine(RecordText& out, int indent);  // old format: a new line and its indent

private:
    unsigned char nameLength = 0;
    char name[kNameLength + 1];
};
