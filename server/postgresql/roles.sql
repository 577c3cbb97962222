-- The two roles that every database of this kind shares: the owner of the tables, as which nobody
-- logs in, and the group that all accounts belong to. Roles belong to the whole server, so this may
-- have run before.
DO $$
BEGIN
    IF NOT EXISTS (SELECT FROM pg_catalog.pg_roles WHERE rolname = 'quorvi_owner') THEN
        CREATE ROLE quorvi_owner NOLOGIN;
    END IF;
    IF NOT EXISTS (SELECT FROM pg_catalog.pg_roles WHERE rolname = 'quorvi_accounts') THEN
        CREATE ROLE quorvi_accounts NOLOGIN;
    END IF;
    -- Whoever sets this up without being superuser acts as the owner for the rest.
    IF NOT pg_catalog.pg_has_role(current_user, 'quorvi_owner', 'MEMBER') THEN
        EXECUTE pg_catalog.format('GRANT quorvi_owner TO %I', current_user);
    END IF;
    -- An account needs nothing of the database but to connect to it: no tables of its own, no
    -- temporary ones.
    EXECUTE pg_catalog.format('REVOKE ALL ON DATABASE %I FROM PUBLIC', pg_catalog.current_database());
    EXECUTE pg_catalog.format('GRANT CONNECT ON DATABASE %I TO quorvi_accounts', pg_catalog.current_database());
    EXECUTE pg_catalog.format('GRANT CREATE ON DATABASE %I TO quorvi_owner', pg_catalog.current_database());
END $$;
