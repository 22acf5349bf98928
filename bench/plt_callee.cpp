// A function behind the procedure linkage table of plt_calls.
extern "C" __attribute__((visibility("default"))) unsigned NextNumber(unsigned number) {
    return number * 3 + 1;
}
