-- Calls without end, log by log in their order.
SELECT
    host,
    run,
    call,
    function,
    pid,
    tid,
    session,
    time
FROM {table:Identifier} FINAL
WHERE version = 1 AND time >= {since:UInt64}
ORDER BY host, log, position
LIMIT 1000
