-- The view `calls_by_minute`, for dashboards: calls, errors and time by minute, host, function and result. It counts calls
-- that came back. A call that is inserted twice counts twice here: the view sees insertions, not calls. For figures that
-- hold, ask `calls` with FINAL. It counts what is inserted after it was made.
--
-- Ask it with sum() and GROUP BY: the engine adds rows up when it merges.
CREATE MATERIALIZED VIEW IF NOT EXISTS calls_by_minute
ENGINE = SummingMergeTree((calls, errors, ns))
PARTITION BY toYYYYMM(minute)
ORDER BY (minute, host, function, result)
AS SELECT
    toStartOfMinute(toDateTime(intDiv(time, 1000000000), 'UTC')) AS minute,
    host,
    function,
    result,
    toUInt64(1) AS calls,
    toUInt64(result != 'CKR_OK') AS errors,
    ifNull(ns, 0) AS ns
FROM calls
WHERE version = 2
