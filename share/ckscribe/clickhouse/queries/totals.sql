-- What each log of each host holds. `last_time` is the last moment that it tells: the end of a call, or the beginning
-- of one without an end.
SELECT
    host,
    log,
    count() AS calls,
    countIf(version = 2 AND result != 'CKR_OK') AS errors,
    countIf(version = 1) AS unfinished,
    uniqExact(pid) AS processes,
    uniqExactIf(pid, assumeNotNull(tid), isNotNull(tid)) AS threads,
    min(time) AS first_time,
    max(time + ifNull(ns, 0)) AS last_time
FROM {table:Identifier} FINAL
WHERE time >= {since:UInt64}
GROUP BY host, log
ORDER BY host, log
