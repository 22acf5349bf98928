-- Keys and other objects by their labels, with the operations that were begun with them. What a call tells of an object
-- holds from the last call on that made it: a handle may have been another object's before.
SELECT
    host,
    log,
    pid,
    handle AS object,
    anyIf(name, name != '') AS label,
    anyIf(number, number != '') AS id,
    anyIf(kind, kind != '') AS class,
    sum(times) AS operations,
    arraySort(groupArrayIf(way, times != 0)) AS mechanisms,
    arraySort((value, key) -> key, groupArrayIf(times, times != 0), groupArrayIf(way, times != 0)) AS counts
FROM
(
    -- Operations. The object of a call that only makes one was not used in it.
    SELECT host, log, pid, assumeNotNull(object) AS handle, mechanism AS way, count() AS times,
        '' AS name, '' AS number, '' AS kind
    FROM {table:Identifier} FINAL
    WHERE isNotNull(object) AND mechanism != '' AND NOT (version = 2 AND result != 'CKR_OK')
        AND function NOT IN ('C_GenerateKey', 'C_GenerateKeyPair') AND time >= {since:UInt64}
    GROUP BY host, log, pid, handle, way
    UNION ALL
    -- What is known of objects: of each detail the first that was told since the object was made.
    SELECT host, log, pid, object AS handle, '' AS way, toUInt64(0) AS times,
        arrayFilter((detail, at, since) -> detail != '' AND at >= since, names, places, all_made)[1] AS name,
        arrayFilter((detail, at, since) -> detail != '' AND at >= since, numbers, places, all_made)[1] AS number,
        arrayFilter((detail, at, since) -> detail != '' AND at >= since, kinds, places, all_made)[1] AS kind
    FROM
    (
        SELECT
            host,
            log,
            pid,
            object,
            arraySort(groupArray(place)) AS places,
            arrayResize(emptyArrayUInt64(), length(places), max(place * makes)) AS all_made,
            arraySort((item, at) -> at, groupArray(name), groupArray(place)) AS names,
            arraySort((item, at) -> at, groupArray(number), groupArray(place)) AS numbers,
            arraySort((item, at) -> at, groupArray(kind), groupArray(place)) AS kinds
        FROM
        (
            SELECT host, log, pid, object, name, number, kind, position AS place,
                role != 'read attributes' AS makes
            FROM {table:Identifier} FINAL
            ARRAY JOIN objects AS object, labels AS name, ids AS number, classes AS kind
            WHERE role IN ('make object', 'make key pair', 'read attributes') AND time >= {since:UInt64}
            UNION ALL
            -- A search finds objects with the details that its session searches for. `search` counts the beginnings and
            -- ends of searches of a session.
            SELECT host, log, pid, arrayJoin(handles) AS object, name, number, kind, place, 0 AS makes
            FROM
            (
                SELECT host, log, pid, name, number, kind, found.1 AS place, found.2 AS handles
                FROM
                (
                    SELECT host, log, pid, session_number, search,
                        anyIf(item.4, item.2) AS name,
                        anyIf(item.5, item.2) AS number,
                        anyIf(item.6, item.2) AS kind,
                        groupArrayIf((item.1, item.3), NOT item.2) AS finds
                    FROM
                    (
                        SELECT
                            host,
                            log,
                            pid,
                            ifNull(session, 0) AS session_number,
                            arraySort(one -> one.1, groupArray((position, role != 'search', objects,
                                labels[1], ids[1], classes[1]))) AS items,
                            arrayCumSum(one -> one.2, items) AS searches
                        FROM {table:Identifier} FINAL
                        WHERE role IN ('begin search', 'search', 'end search') AND version = 2 AND time >= {since:UInt64}
                        GROUP BY host, log, pid, session_number
                    )
                    ARRAY JOIN items AS item, searches AS search
                    GROUP BY host, log, pid, session_number, search
                )
                ARRAY JOIN finds AS found
            )
            WHERE name != '' OR number != '' OR kind != ''
        )
        GROUP BY host, log, pid, object
    )
)
GROUP BY host, log, pid, handle
HAVING operations != 0 OR label != '' OR id != '' OR class != ''
ORDER BY operations DESC, host, log, pid, object
