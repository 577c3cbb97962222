-- Accounts may read their rows and call the functions, and nothing else: whoever may change a table may also
-- lock it for all others. The functions run with the owner's rights and go by the session's user, who is
-- the account.
DO $$
DECLARE
    f regprocedure;
BEGIN
    FOR f IN SELECT p.oid FROM pg_catalog.pg_proc p WHERE p.pronamespace = 'quorvi'::regnamespace LOOP
        EXECUTE pg_catalog.replace(pg_catalog.pg_get_functiondef(f), 'CURRENT_USER', 'SESSION_USER');
        EXECUTE pg_catalog.format('ALTER FUNCTION %s SECURITY DEFINER SET search_path = pg_catalog, pg_temp', f);
    END LOOP;
END $$;
REVOKE ALL ON FUNCTION quorvi.begin_change(bigint), quorvi.announce_change(uuid) FROM quorvi_accounts;
REVOKE ALL ON quorvi.accounts, quorvi.zones, quorvi.records FROM quorvi_accounts;
REVOKE ALL (account, version) ON quorvi.accounts FROM quorvi_accounts;
GRANT SELECT ON quorvi.accounts, quorvi.zones, quorvi.records TO quorvi_accounts;

ALTER POLICY own ON quorvi.accounts USING (account = SESSION_USER::text);
ALTER POLICY own ON quorvi.zones USING (account = SESSION_USER::text);
ALTER POLICY own ON quorvi.records USING (account = SESSION_USER::text);

-- The rows that an administrator removes, see quorvi-cloud-server.
CREATE FUNCTION quorvi.is_being_removed(account text) RETURNS boolean
LANGUAGE sql STABLE SET search_path = pg_catalog, pg_temp AS $$
    SELECT account = current_setting('quorvi.removing', true)
        AND pg_has_role(SESSION_USER, 'quorvi_owner', 'MEMBER')
$$;
REVOKE ALL ON FUNCTION quorvi.is_being_removed(text) FROM PUBLIC;
CREATE POLICY removed ON quorvi.accounts TO quorvi_owner USING (quorvi.is_being_removed(account));
CREATE POLICY removed ON quorvi.zones TO quorvi_owner USING (quorvi.is_being_removed(account));
CREATE POLICY removed ON quorvi.records TO quorvi_owner USING (quorvi.is_being_removed(account));
