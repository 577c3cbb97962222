-- The two roles that all databases of a server share: the owner of the tables, who cannot log in, and
-- the group of all accounts. They may exist already, because roles belong to the server.
DO $$
DECLARE
    f regprocedure;
BEGIN
    IF NOT EXISTS (SELECT FROM pg_catalog.pg_roles WHERE rolname = 'quorvi_owner') THEN
        CREATE ROLE quorvi_owner NOLOGIN;
    END IF;
    IF NOT EXISTS (SELECT FROM pg_catalog.pg_roles WHERE rolname = 'quorvi_accounts') THEN
        CREATE ROLE quorvi_accounts NOLOGIN;
    END IF;
    -- Without superuser rights, the rest is done as the owner.
    IF NOT pg_catalog.pg_has_role(current_user, 'quorvi_owner', 'MEMBER') THEN
        EXECUTE pg_catalog.format('GRANT quorvi_owner TO %I', current_user);
    END IF;
    -- Accounts may only connect: they need no tables of their own, not even temporary ones.
    EXECUTE pg_catalog.format('REVOKE ALL ON DATABASE %I FROM PUBLIC', pg_catalog.current_database());
    EXECUTE pg_catalog.format('GRANT CONNECT ON DATABASE %I TO quorvi_accounts', pg_catalog.current_database());
    EXECUTE pg_catalog.format('GRANT CREATE ON DATABASE %I TO quorvi_owner', pg_catalog.current_database());
    -- Large objects would be a store of their own, and locks of their own use up the server's table of
    -- locks. These functions belong to the server.
    IF (SELECT rolsuper FROM pg_catalog.pg_roles WHERE rolname = current_user) THEN
        FOR f IN SELECT p.oid FROM pg_catalog.pg_proc p WHERE p.pronamespace = 'pg_catalog'::regnamespace
                AND p.proname ~ '^(lo_(creat|create|from_bytea|import|put)|lowrite|pg_(try_)?advisory_(xact_)?lock(_shared)?)$' LOOP
            EXECUTE pg_catalog.format('REVOKE EXECUTE ON FUNCTION %s FROM PUBLIC', f);
        END LOOP;
    ELSE
        RAISE NOTICE 'Only a superuser can keep the accounts from making large objects.';
    END IF;
END $$;
