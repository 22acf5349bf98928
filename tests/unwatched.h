// A part of a test that the thread sanitizer need not watch.
#pragma once

#if defined(__SANITIZE_THREAD__)
#define CKSCRIBE_THREADS_ARE_WATCHED 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define CKSCRIBE_THREADS_ARE_WATCHED 1
#endif
#endif

#ifdef CKSCRIBE_THREADS_ARE_WATCHED
// The sanitizer defines these.
extern "C" void AnnotateIgnoreReadsBegin(const char* file, int line);
extern "C" void AnnotateIgnoreReadsEnd(const char* file, int line);
extern "C" void AnnotateIgnoreWritesBegin(const char* file, int line);
extern "C" void AnnotateIgnoreWritesEnd(const char* file, int line);
#endif

// While an object of this class lives, the thread sanitizer does not watch what the thread reads and writes.
// Objects may nest. The thread that makes an object must destroy it.
//
// A test uses it where it takes a log of millions of records apart: no other thread runs then, and the watch
// would take longer than the calls that made the log.
class Unwatched {
public:
#ifdef CKSCRIBE_THREADS_ARE_WATCHED
    Unwatched() {
        AnnotateIgnoreReadsBegin(__FILE__, __LINE__);
        AnnotateIgnoreWritesBegin(__FILE__, __LINE__);
    }
    ~Unwatched() {
        AnnotateIgnoreWritesEnd(__FILE__, __LINE__);
        AnnotateIgnoreReadsEnd(__FILE__, __LINE__);
    }
#else
    Unwatched() {}
    ~Unwatched() {}
#endif
    Unwatched(const Unwatched&) = delete;
    Unwatched& operator=(const Unwatched&) = delete;
};
