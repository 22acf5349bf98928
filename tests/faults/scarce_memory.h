// The memory of the whole process: every allocation is counted, and may be refused.
//
// scarce_memory.cpp replaces malloc and its kin in the program that it is linked to, and so in all that the
// program loads. It is compiled without sanitizers, for it is called before they are ready.
#pragma once

enum class Refused {
    kOne,         // one allocation, and none after it
    kAllFromThen  // one allocation, and all after it
};

// Refuses the calling thread's allocation with this number, counted from this call on, from 0.
void RefuseAllocation(unsigned long number, Refused which);

// Ends that. False when there were not so many allocations.
bool StopRefusing();

// What is allocated now, by all threads; the bytes as the allocator rounds them.
long AllocatedBlocks();
long AllocatedBytes();
