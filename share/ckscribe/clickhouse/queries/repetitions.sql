-- Calls of one thread in a row that did the same: failed alike (`fails` = 1, two or more), or only asked for the same
-- (ten or more; addresses, to which the answer goes, do not count).
-- `pid`, `tid`, `host` and `time` are those of the longest row; of equally long ones, of the one that began first.
SELECT
    fails,
    function,
    result,
    count() AS rows,
    max(length) AS longest,
    sum(length) AS calls,
    argMin(machine, (0 - toInt64(length), began, process, ifNull(thread, 0))) AS host,
    argMin(process, (0 - toInt64(length), began, process, ifNull(thread, 0))) AS pid,
    argMin(thread, (0 - toInt64(length), began, process, ifNull(thread, 0))) AS tid,
    argMin(began, (0 - toInt64(length), began, process, ifNull(thread, 0))) AS time
FROM
(
    SELECT
        host AS machine,
        pid AS process,
        tid AS thread,
        row.1 AS function,
        row.2 AS result,
        row.3 AS began,
        row.4 AS length,
        row.5 AND NOT (row.6 AND row.2 = 'CKR_NO_EVENT') AS fails,
        row.6 AS asking
    FROM
    (
        SELECT
            host,
            pid,
            tid,
            arrayJoin(arrayFilter(item -> item.4 >= 2, arrayMap(
                (name, answer, moment, begin, end, ask) -> (name, answer, moment, end - begin, answer != 'CKR_OK', ask),
                arrayFilter((item, is) -> is, names, begins),
                arrayFilter((item, is) -> is, answers, begins),
                arrayFilter((item, is) -> is, moments, begins),
                arrayFilter((item, is) -> is, arrayEnumerate(begins), begins),
                arrayPushBack(arrayPopFront(arrayFilter((item, is) -> is, arrayEnumerate(begins), begins)),
                    toUInt32(length(begins) + 1)),
                arrayFilter((item, is) -> is, asking, begins)))) AS row
        FROM
        (
            SELECT
                host,
                pid,
                tid,
                arraySort((item, place) -> place, groupArray(function), groupArray(position)) AS names,
                arraySort((item, place) -> place, groupArray(result), groupArray(position)) AS answers,
                arraySort((item, place) -> place, groupArray(time), groupArray(position)) AS moments,
                arraySort((item, place) -> place, groupArray(asks), groupArray(position)) AS asking,
                arraySort((item, place) -> place, groupArray(question), groupArray(position)) AS questions,
                arrayMap((name, answer, wanted, name_before, answer_before, wanted_before) ->
                        name != name_before OR answer != answer_before OR wanted != wanted_before,
                    names, answers, questions, arrayPushFront(arrayPopBack(names), ''),
                    arrayPushFront(arrayPopBack(answers), ''), arrayPushFront(arrayPopBack(questions), toUInt64(0)))
                    AS begins
            FROM
            (
                SELECT
                    host,
                    log,
                    pid,
                    tid,
                    function,
                    result,
                    time,
                    asks,
                    position,
                    if(asks = 1, cityHash64(replaceRegexpAll(inputs, ',?[{]"kind":"Pointer","value":"?[0-9]+"?[}]', '')),
                        toUInt64(0)) AS question
                FROM {table:Identifier} FINAL
                WHERE version = 2 AND time >= {since:UInt64}
            )
            GROUP BY host, log, pid, tid
        )
    )
)
WHERE fails OR (asking AND length >= 10)
GROUP BY fails, function, result
ORDER BY fails DESC, longest DESC, function, result
