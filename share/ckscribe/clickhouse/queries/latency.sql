-- Latency by function and host, in nanoseconds. `buckets` and `counts` are the distribution: the percentiles of several
-- hosts come from their sum. A percentile is the middle of the bucket that holds it, and never above the maximum.
SELECT
    function,
    host,
    calls,
    errors,
    unfinished,
    timed,
    total_ns,
    percentiles[1] AS p50_ns,
    percentiles[2] AS p95_ns,
    percentiles[3] AS p99_ns,
    max_ns,
    buckets,
    counts
FROM
(
    SELECT
        *,
        arrayMap(percent -> buckets[arrayFirstIndex(seen -> seen >= intDiv(timed * percent + 99, 100), arrayCumSum(counts))],
            [50, 95, 99]) AS places,
        arrayMap(place -> least(max_ns, if(place < 256, toUInt64(place),
            bitShiftLeft(toUInt64(place % 128 + 128), toUInt8(greatest(intDiv(place, 128), 1) - 1))
            + intDiv(toUInt64(bitShiftLeft(toUInt64(1), toUInt8(greatest(intDiv(place, 128), 1) - 1)) - 1), 2))),
            places) AS percentiles
    FROM
    (
        SELECT
            function,
            host,
            sum(all) AS calls,
            sum(bad) AS errors,
            sum(open) AS unfinished,
            sumIf(all, has_ns) AS timed,
            sum(total) AS total_ns,
            max(longest) AS max_ns,
            arraySort(groupArrayIf(bucket, has_ns)) AS buckets,
            arraySort((times, key) -> key, groupArrayIf(all, has_ns), groupArrayIf(bucket, has_ns)) AS counts
        FROM
        (
            SELECT
                function,
                host,
                bucket,
                isNotNull(ns) AS has_ns,
                count() AS all,
                countIf(version = 2 AND result != 'CKR_OK') AS bad,
                countIf(version = 1) AS open,
                sum(ifNull(ns, 0)) AS total,
                max(ifNull(ns, 0)) AS longest
            FROM {table:Identifier} FINAL
            WHERE time >= {since:UInt64}
            GROUP BY function, host, bucket, has_ns
        )
        GROUP BY function, host
    )
)
ORDER BY function, host
