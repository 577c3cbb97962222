-- Partitions the records by account, for a large server; see docs/SCALING.md. Run once, by hand, while
-- nobody is connected:
--   psql --single-transaction -v ON_ERROR_STOP=1 -v parts=64 -f server/postgresql/partition-by-account.sql quorvi
-- Each operation then touches one partition. Accounts have no rights on the partitions themselves.
SET ROLE quorvi_owner;
ALTER TABLE quorvi.records RENAME TO records_before;
ALTER TABLE quorvi.records_before NO FORCE ROW LEVEL SECURITY;
CREATE TABLE quorvi.records (LIKE quorvi.records_before INCLUDING ALL) PARTITION BY HASH (account);
SELECT pg_catalog.format(
        'CREATE TABLE quorvi.records_%s PARTITION OF quorvi.records FOR VALUES WITH (MODULUS %s, REMAINDER %s)',
        part, :parts, part)
    FROM pg_catalog.generate_series(0, :parts - 1) part \gexec
INSERT INTO quorvi.records SELECT * FROM quorvi.records_before;
DROP TABLE quorvi.records_before;
ALTER TABLE quorvi.records ENABLE ROW LEVEL SECURITY;
ALTER TABLE quorvi.records FORCE ROW LEVEL SECURITY;
CREATE POLICY own ON quorvi.records USING (account = SESSION_USER::text);
CREATE POLICY removed ON quorvi.records TO quorvi_owner USING (quorvi.is_being_removed(account));
GRANT SELECT ON quorvi.records TO quorvi_accounts;
RESET ROLE;
