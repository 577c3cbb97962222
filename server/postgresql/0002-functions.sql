-- The functions that devices call, with the rights of the calling account (changed by 0003-rights.sql). Each
-- call is a transaction.

-- Returns the id of the account and whether the server sends notifications. Creates the row at the first
-- call.
CREATE FUNCTION quorvi.open_account(OUT id uuid, OUT push boolean)
LANGUAGE plpgsql AS $$
BEGIN
    SELECT a.id INTO id FROM quorvi.accounts a WHERE a.account = CURRENT_USER::text;
    IF NOT FOUND THEN
        INSERT INTO quorvi.accounts (account) VALUES (CURRENT_USER::text) ON CONFLICT DO NOTHING;
        SELECT a.id INTO STRICT id FROM quorvi.accounts a WHERE a.account = CURRENT_USER::text;
    END IF;
    SELECT s.push INTO push FROM quorvi.server s;
END $$;

-- Increments the version of the account, and locks out its other writers until the commit.
CREATE FUNCTION quorvi.begin_change(changes bigint, OUT id uuid, OUT version bigint)
LANGUAGE plpgsql AS $$
BEGIN
    UPDATE quorvi.accounts a SET version = a.version + changes
        WHERE a.account = CURRENT_USER::text RETURNING a.id, a.version INTO id, version;
    IF NOT FOUND THEN
        RAISE EXCEPTION 'there is no such account' USING ERRCODE = 'insufficient_privilege';
    END IF;
END $$;

-- Notifies the other devices of the account at the commit. The notification has no content.
CREATE FUNCTION quorvi.announce_change(id uuid) RETURNS void
LANGUAGE plpgsql AS $$
BEGIN
    IF (SELECT s.push FROM quorvi.server s) THEN
        PERFORM pg_catalog.pg_notify('quorvi_' || pg_catalog.replace(id::text, '-', ''), '');
    END IF;
END $$;

CREATE FUNCTION quorvi.save_zone(zone_name text) RETURNS void
LANGUAGE plpgsql AS $$
DECLARE
    change record;
    -- 60 random bits: never negative, never an earlier generation.
    lot bigint := ('x' || pg_catalog.left(pg_catalog.md5(pg_catalog.gen_random_uuid()::text), 15))::bit(60)::bigint;
BEGIN
    -- Devices save their zone at every connection; an existing one needs no lock and no notification.
    PERFORM FROM quorvi.zones z
        WHERE z.account = CURRENT_USER::text AND z.name = zone_name AND z.generation IS NOT NULL;
    IF FOUND THEN RETURN; END IF;
    change := quorvi.begin_change(1);
    INSERT INTO quorvi.zones AS z (account, name, generation, version)
        VALUES (CURRENT_USER::text, zone_name, lot, change.version)
        ON CONFLICT (account, name) DO UPDATE SET generation = lot, version = change.version
        WHERE z.generation IS NULL;
    IF FOUND THEN PERFORM quorvi.announce_change(change.id); END IF;
END $$;

CREATE FUNCTION quorvi.delete_zone(zone_name text) RETURNS void
LANGUAGE plpgsql AS $$
DECLARE
    change record;
    gone bigint;
BEGIN
    change := quorvi.begin_change(1);
    SELECT z.generation INTO gone FROM quorvi.zones z
        WHERE z.account = CURRENT_USER::text AND z.name = zone_name;
    IF gone IS NULL THEN RETURN; END IF;
    UPDATE quorvi.zones z SET generation = NULL, version = change.version
        WHERE z.account = CURRENT_USER::text AND z.name = zone_name;
    DELETE FROM quorvi.records r WHERE r.account = CURRENT_USER::text AND r.zone = gone;
    PERFORM quorvi.announce_change(change.id);
END $$;

-- Saves a batch of records with distinct names. `tags` are the versions known to the device, 0 for a new
-- record. The first row of the result has place 0 and either an error code for the batch (26: no such
-- zone) or a version V: the record at place P, from 1, now has version V + P. Each refused record has a
-- further row: code 14 and the stored record, or code 11 if there is none.
CREATE FUNCTION quorvi.save_records(zone_name text, names text[], types text[], tags bigint[], payloads bytea[])
RETURNS TABLE (place bigint, code integer, version bigint, type text, payload bytea)
LANGUAGE plpgsql AS $$
#variable_conflict use_column
DECLARE
    change record;
    new record;
    stored record;
    wanted integer := pg_catalog.cardinality(names);
    known integer := pg_catalog.cardinality(pg_catalog.array_remove(tags, 0));
    base bigint;
    generation bigint;
    saved integer := 0;
BEGIN
    change := quorvi.begin_change(wanted);
    base := change.version - wanted;
    SELECT z.generation INTO generation FROM quorvi.zones z
        WHERE z.account = CURRENT_USER::text AND z.name = zone_name;
    IF generation IS NULL THEN
        RETURN QUERY SELECT 0::bigint, 26, 0::bigint, NULL::text, NULL::bytea;
        RETURN;
    END IF;
    -- No joins of the batch with the table: the planner can badly misjudge the rows of an account,
    -- while a loop over single rows always uses the key.
    IF known < wanted THEN
        INSERT INTO quorvi.records (account, zone, version, name, type, payload)
            SELECT CURRENT_USER::text, generation, base + n.place, n.name, n.type, n.payload
            FROM ROWS FROM (unnest(names), unnest(types), unnest(tags), unnest(payloads))
                WITH ORDINALITY AS n (name, type, tag, payload, place)
            WHERE n.tag = 0
            ON CONFLICT (account, zone, name) DO NOTHING;
        GET DIAGNOSTICS saved = ROW_COUNT;
    END IF;
    IF known > 0 THEN
        FOR new IN SELECT * FROM ROWS FROM (unnest(names), unnest(types), unnest(tags), unnest(payloads))
                WITH ORDINALITY AS n (name, type, tag, payload, place) WHERE n.tag <> 0 LOOP
            UPDATE quorvi.records r SET version = base + new.place, type = new.type, payload = new.payload
                WHERE r.account = CURRENT_USER::text AND r.zone = generation
                    AND r.name = new.name AND r.version = new.tag;
            IF FOUND THEN saved := saved + 1; END IF;
        END LOOP;
    END IF;
    IF saved > 0 THEN
        UPDATE quorvi.zones z SET version = change.version
            WHERE z.account = CURRENT_USER::text AND z.name = zone_name;
        PERFORM quorvi.announce_change(change.id);
    END IF;
    RETURN QUERY SELECT 0::bigint, 0, base, NULL::text, NULL::bytea;
    IF saved = wanted THEN RETURN; END IF;
    FOR new IN SELECT n.place, n.name FROM unnest(names) WITH ORDINALITY AS n (name, place) LOOP
        SELECT r.version, r.type, r.payload INTO stored FROM quorvi.records r
            WHERE r.account = CURRENT_USER::text AND r.zone = generation AND r.name = new.name;
        IF NOT FOUND THEN
            RETURN QUERY SELECT new.place, 11, NULL::bigint, NULL::text, NULL::bytea;
        ELSIF stored.version <> base + new.place THEN
            RETURN QUERY SELECT new.place, 14, stored.version, stored.type, stored.payload;
        END IF;
    END LOOP;
END $$;

-- Only accounts may call these.
REVOKE ALL ON ALL FUNCTIONS IN SCHEMA quorvi FROM PUBLIC;
GRANT EXECUTE ON ALL FUNCTIONS IN SCHEMA quorvi TO quorvi_accounts;
