-- Calls that opened or closed sessions and worked, log by log in their order.
SELECT
    host,
    log,
    role,
    function,
    pid,
    tid,
    slot,
    session,
    time
FROM {table:Identifier} FINAL
WHERE role IN ('open session', 'close session', 'close all sessions', 'finalize')
    AND version = 2 AND result = 'CKR_OK' AND time >= {since:UInt64}
ORDER BY host, log, position
