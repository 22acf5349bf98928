-- The table `calls`: one row a call. `ckscribe convert --to clickhouse` writes its rows.
--
-- A call is named by host, run and call. Its start has version 1 and its end version 2: whichever comes last, the end
-- stays. A repeat replaces the row that it repeats. The engine replaces when it merges; until then only a query with
-- FINAL sees each call once.
--
-- Percentiles are those of `ckscribe report`, from buckets: durations below 256 ns have one each, and every power of two
-- above is split into 128. The bucket of a longer duration of N bits is (N - 8) * 128 plus its upper eight bits.
--
-- It works in version 18.16, which has neither DateTime64 nor TTL: moments are nanoseconds since 1970 in UTC. Days go by
--     ALTER TABLE calls DROP PARTITION 20261121
CREATE TABLE IF NOT EXISTS calls
(
    host String,
    run String,
    call UInt64,
    version UInt8,                        -- 1: the start, 2: the end
    time UInt64,                          -- when the call began
    ns Nullable(UInt64),                  -- how long the target took; none of a call without end
    function String,
    result String,                        -- "CKR_OK"; empty: the call did not come back
    rv Nullable(UInt64),
    pid UInt32,
    tid Nullable(Int64),
    slot Nullable(UInt64),
    session Nullable(UInt64),
    object Nullable(UInt64),
    user Nullable(UInt64),
    mechanism String,
    mechanism_number Nullable(UInt64),
    inputs String,                        -- the members `in` and `out` of the event, as JSON
    outputs String,
    log String,                           -- the host's file of events, without what rotation adds to its name
    position UInt64,                      -- orders the calls of a log as their events stand in it
    role String,                          -- what a report follows: "open session", "begin search"
    asks UInt8,                           -- 1: the function only asks
    objects Array(UInt64),                -- what the call made, found or read; 0: what it searches for
    labels Array(String),                 -- and what it tells of each of them
    ids Array(String),
    classes Array(String),
    token String,                         -- what C_GetTokenInfo tells
    serial String,
    bucket UInt16,                        -- of `ns`, for percentiles: see below
    moment DateTime ALIAS toDateTime(intDiv(time, 1000000000))
)
ENGINE = ReplacingMergeTree(version)
PARTITION BY toDate(toUInt16(intDiv(time, 86400000000000)))
ORDER BY (host, run, call)
