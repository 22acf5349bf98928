// The one lock under which records are built and printed.
#pragma once

#include <atomic>

#include "host/orma_mutex.h"

// Null before the first start-up; always the same mutex afterwards: a thread may hold it while another starts
// the library again, and with two mutexes two records could be printed at once.
extern std::atomic<OrmaMutex*> pCkLogMutex;
