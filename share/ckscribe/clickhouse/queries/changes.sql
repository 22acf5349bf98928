-- What changed since a moment: for each function and result, the calls before it and from then on, what share of their
-- function's calls that is, and how long they took on average. What is new comes first, then what changed most.
SELECT
    function,
    result,
    before,
    since,
    round(before / greatest(all_before, 1), 6) AS share_before,
    round(since / greatest(all_since, 1), 6) AS share_since,
    ns_before,
    ns_since,
    first_time_since,
    hosts_since
FROM
(
    SELECT
        function,
        result,
        countIf(time < {since:UInt64}) AS before,
        countIf(time >= {since:UInt64}) AS since,
        intDiv(sumIf(ifNull(ns, 0), time < {since:UInt64}), greatest(before, 1)) AS ns_before,
        intDiv(sumIf(ifNull(ns, 0), time >= {since:UInt64}), greatest(since, 1)) AS ns_since,
        minIf(time, time >= {since:UInt64}) AS first_time_since,
        uniqExactIf(host, time >= {since:UInt64}) AS hosts_since
    FROM {table:Identifier} FINAL
    GROUP BY function, result
)
ANY LEFT JOIN
(
    SELECT
        function,
        countIf(time < {since:UInt64}) AS all_before,
        countIf(time >= {since:UInt64}) AS all_since
    FROM {table:Identifier} FINAL
    GROUP BY function
) USING (function)
ORDER BY before = 0 DESC, abs(share_since - share_before) DESC, function, result
