-- Hosts that differ from the rest: for each function and host, how its median latency and its share of errors stand to
-- those of the host in the middle. The hosts that differ most come first. Fewer than ten calls
-- say nothing, nor do fewer than three hosts.
SELECT
    host,
    function,
    calls,
    errors,
    p50_ns,
    middle_ns,
    round(p50_ns / middle_ns, 2) AS times_slower,
    errors / calls AS error_share,
    middle_share
FROM
(
    SELECT
        function,
        arrayJoin(arrayMap((a, b, c, d) -> (a, b, c, d),
            groupArray(machine), groupArray(all_calls), groupArray(bad_calls), groupArray(median))) AS one,
        one.1 AS host,
        one.2 AS calls,
        one.3 AS errors,
        one.4 AS p50_ns,
        arraySort(groupArray(median))[intDiv(count() + 1, 2)] AS middle_ns,
        arraySort(groupArray(bad_calls / all_calls))[intDiv(count() + 1, 2)] AS middle_share
    FROM
    (
        SELECT
            function,
            host AS machine,
            sum(all) AS all_calls,
            sum(bad) AS bad_calls,
            sumIf(all, has_ns) AS timed,
            arraySort(groupArrayIf(bucket, has_ns)) AS buckets,
            arraySort((times, key) -> key, groupArrayIf(all, has_ns), groupArrayIf(bucket, has_ns)) AS counts,
            max(longest) AS max_ns,
            buckets[arrayFirstIndex((seen, half) -> seen >= half, arrayCumSum(counts),
                arrayResize(emptyArrayUInt64(), length(counts), intDiv(timed + 1, 2)))] AS place,
            least(max_ns, if(place < 256, toUInt64(place),
                bitShiftLeft(toUInt64(place % 128 + 128), toUInt8(greatest(intDiv(place, 128), 1) - 1))
                + intDiv(toUInt64(bitShiftLeft(toUInt64(1), toUInt8(greatest(intDiv(place, 128), 1) - 1)) - 1), 2))) AS median
        FROM
        (
            SELECT
                function,
                host,
                bucket,
                isNotNull(ns) AS has_ns,
                count() AS all,
                countIf(version = 2 AND result != 'CKR_OK') AS bad,
                max(ifNull(ns, 0)) AS longest
            FROM {table:Identifier} FINAL
            WHERE time >= {since:UInt64}
            GROUP BY function, host, bucket, has_ns
        )
        GROUP BY function, host
        HAVING all_calls >= 10 AND timed != 0
    )
    GROUP BY function
    HAVING count() >= 3
)
ORDER BY greatest(p50_ns / greatest(middle_ns, 1), middle_ns / greatest(p50_ns, 1)) * (1 + abs(error_share - middle_share) * 10) DESC,
    host, function
LIMIT 100
