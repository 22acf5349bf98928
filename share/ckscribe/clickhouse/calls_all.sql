-- The table `calls_all`: the tables `calls` of all servers of the cluster `ckscribe` (remote_servers in the configuration
-- of each server) as one. Needs `calls` beside it on every server. All rows of a run go to one server, so that an end
-- meets its start there.
CREATE TABLE IF NOT EXISTS calls_all AS calls
ENGINE = Distributed(ckscribe, currentDatabase(), calls, cityHash64(host, run))
