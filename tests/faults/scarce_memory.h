// Counts every allocation of the whole process, and may refuse it.
//
// scarce_memory.cpp replaces malloc and its kin in the program that it is linked to, and so in all that the
// program loads. It is compiled without sanitizers, for it is called before they are ready.
#pragma once

enum class Refused {
    kOne,         // one allocation, and none after it
    kAllFromThen  // one allocation, and all after it
};

// Refuses one allocation of the calling thread: the one with this number, counted from this call on, from
// 0.
void RefuseAllocation(unsigned long number, Refused which);

// Ends the refusal. Returns false if there were not so many allocations.
bool StopRefusing();

// Return what all threads have allocated now. The allocator rounds the bytes.
long AllocatedBlocks();
long AllocatedBytes();
