-- What functions answered: errors, the most frequent first, and behind them what went well. A number without a name has a
-- row of its own.
SELECT
    function,
    result,
    any(number) AS rv,
    sum(all) AS calls,
    uniqExact(host) AS hosts,
    min(first) AS first_time,
    max(last) AS last_time
FROM
(
    SELECT
        function,
        result,
        host,
        log,
        if(result = 'CKR_UNKNOWN', rv, NULL) AS code,
        count() AS all,
        argMin(rv, position) AS number,
        argMin(time, position) AS first,
        argMax(time, position) AS last
    FROM {table:Identifier} FINAL
    WHERE version = 2 AND time >= {since:UInt64}
    GROUP BY function, result, host, log, code
)
GROUP BY function, result, code
ORDER BY result = 'CKR_OK', calls DESC, function, first_time
