-- Pauses of threads, between the end of a call and the start of the next one: a distribution in nanoseconds. The buckets
-- are those of the column `bucket` of `calls`.
SELECT
    arraySort(groupArray(place)) AS buckets,
    arraySort((times, key) -> key, groupArray(all), groupArray(place)) AS counts,
    sum(all) AS pauses,
    sum(total) AS total_ns,
    max(longest) AS max_ns
FROM
(
    SELECT
        if(pause < 256, toUInt16(pause), toUInt16((width - 8) * 128 + bitShiftRight(pause, toUInt8(width - 8)))) AS place,
        count() AS all,
        sum(pause) AS total,
        max(pause) AS longest
    FROM
    (
        SELECT
            pause,
            toUInt32(log2(pause)) - (bitShiftRight(pause, toUInt8(log2(pause))) = 0) + 1 AS width
        FROM
        (
            SELECT arrayJoin(arrayFilter(length -> length != 0, arrayMap(
                (start, end) -> if(end != 0 AND start > end, toUInt64(start - end), toUInt64(0)),
                arraySort((moment, place) -> place, groupArray(time), groupArray(position)),
                arrayPushFront(arrayPopBack(
                    arraySort((moment, place) -> place, groupArray(time + ifNull(ns, 0)), groupArray(position))), toUInt64(0)))))
                AS pause
            FROM {table:Identifier} FINAL
            WHERE version = 2 AND time >= {since:UInt64}
            GROUP BY host, log, pid, tid
        )
    )
    GROUP BY place
)
