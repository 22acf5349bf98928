// This file counts every allocation of the whole process, and may refuse it.
//
// scarce_memory.cpp replaces malloc and its kin in the program that it is linked to, and so in all that the
// program loads. It is compiled without sanitizers, because it is called before they are ready.
#pragma once

enum class Refused {
    kOne,         // one allocation, and none after it
    kAllFromThen  // one allocation, and all after it
};

// Refuses the calling thread's allocation with this number. The first allocation after this call has the
// number 0.
void RefuseAllocation(unsigned long number, Refused which);

// Ends the refusal. Returns false if no allocation was refused because there were too few.
bool StopRefusing();

// Return how much all threads together have allocated now. The allocator rounds the bytes.
long AllocatedBlocks();
long AllocatedBytes();
