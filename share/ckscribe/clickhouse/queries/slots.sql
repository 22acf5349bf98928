-- The slots that calls name, and the first token that a log tells of each.
SELECT
    host,
    log,
    slot,
    count() AS calls,
    argMinIf(token, position, token != '' OR serial != '') AS token_label,
    argMinIf(serial, position, token != '' OR serial != '') AS token_serial
FROM {table:Identifier} FINAL
WHERE isNotNull(slot) AND time >= {since:UInt64}
GROUP BY host, log, slot
ORDER BY slot, host, log
