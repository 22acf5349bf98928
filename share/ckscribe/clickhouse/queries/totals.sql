-- What each log of each host holds. `last_time` is the end of the log's last call.
SELECT
    host,
    log,
    count() AS calls,
    countIf(version = 2 AND result != 'CKR_OK') AS errors,
    countIf(version = 1) AS unfinished,
    uniqExact(pid) AS processes,
    uniqExactIf(pid, assumeNotNull(tid), isNotNull(tid)) AS threads,
    min(time) AS first_time,
    if(countIf(version = 2) = 0, min(time), argMaxIf(time + ifNull(ns, 0), position, version = 2)) AS last_time
FROM {table:Identifier} FINAL
WHERE time >= {since:UInt64}
GROUP BY host, log
ORDER BY host, log
