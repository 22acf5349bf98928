// Holds the function that plt_calls calls through its procedure linkage table.
extern "C" __attribute__((visibility("default"))) unsigned NextNumber(unsigned number) {
    return number * 3 + 1;
}
