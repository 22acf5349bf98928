# Counts the calls of a text log of the new format by function and result, as a script would. It counts the ends, and the
# starts without an end. Process, thread and function join a start to its end.
#
#     LC_ALL=C gawk -f count_calls.awk calls.log
match($0, /^[0-9][0-9]:[0-9][0-9]:[0-9][0-9] ([0-9]+-+[0-9]+):(STRT|FINI)([A-Za-z_0-9]+) (\**([A-Z_]+[A-Z])[^{]*)?\{.*\}$/, part) {
    key = part[1] part[3]
    if (part[2] == "STRT") {
        open[key]++
    } else {
        if (open[key] > 0) open[key]--
        calls++
        results[part[3] " " part[5]]++
        if (part[5] != "CKR_OK") errors++
    }
    next
}
NF > 0 { unreadable++ }
END {
    for (key in open) unfinished += open[key]
    print calls + unfinished, errors + 0, unfinished + 0, unreadable + 0
    for (key in results) print results[key], key
}
