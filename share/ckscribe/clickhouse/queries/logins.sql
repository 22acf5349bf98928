-- Logins that failed.
SELECT
    host,
    log,
    result,
    pid,
    user,
    count() AS calls,
    argMin(time, position) AS first_time,
    argMax(time, position) AS last_time
FROM {table:Identifier} FINAL
WHERE role = 'log in' AND version = 2 AND result != 'CKR_OK' AND time >= {since:UInt64}
GROUP BY host, log, result, pid, user
ORDER BY calls DESC, host, log, result, pid, ifNull(user, 18446744073709551615)
