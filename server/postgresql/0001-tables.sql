-- Zones and records of all accounts. An account is a login role. Each row belongs to one account and is
-- invisible to all others, including the owner of the tables. Every key begins with the account, so the
-- tables can be partitioned or distributed by account.
CREATE SCHEMA quorvi;
GRANT USAGE ON SCHEMA quorvi TO quorvi_accounts;

-- The migrations that this database has applied.
CREATE TABLE quorvi.migrations (
    number integer PRIMARY KEY,
    applied timestamptz NOT NULL DEFAULT pg_catalog.now()
);
GRANT SELECT ON quorvi.migrations TO quorvi_accounts;

-- A single row of server settings. Without push there are no notifications, and devices poll.
CREATE TABLE quorvi.server (
    one boolean PRIMARY KEY DEFAULT true CHECK (one),
    push boolean NOT NULL DEFAULT true
);
INSERT INTO quorvi.server DEFAULT VALUES;
GRANT SELECT ON quorvi.server TO quorvi_accounts;

-- `version` numbers the changes of an account. A writer increments it first and so locks the row until
-- its commit: writers of an account are serialised, versions are committed in order, and a reader up to
-- a version cannot have missed a lower one.
-- `id` identifies the account even if a role of the same name is created later. It names the
-- notification channel, which others cannot guess.
CREATE TABLE quorvi.accounts (
    account text COLLATE "C" PRIMARY KEY,
    id uuid NOT NULL DEFAULT pg_catalog.gen_random_uuid(),
    version bigint NOT NULL DEFAULT 0
);

-- A deleted zone keeps its row, so that other devices learn of the deletion. `generation` distinguishes
-- a zone from earlier ones of its name; it is random, so that it differs after restoring a backup, too.
-- Null if the zone is deleted.
CREATE TABLE quorvi.zones (
    account text COLLATE "C" NOT NULL,
    name text COLLATE "C" NOT NULL,
    generation bigint,
    version bigint NOT NULL,  -- of the last change in it, or of its deletion
    PRIMARY KEY (account, name)
);

-- `zone` is the generation of the zone. `version` is the change tag and the position in the sequence of
-- changes. No foreign key: the functions check the zone while they hold the account's lock, and a check
-- per row would cost more than the rest of the statement.
CREATE TABLE quorvi.records (
    account text COLLATE "C" NOT NULL,
    zone bigint NOT NULL,
    version bigint NOT NULL,
    name text COLLATE "C" NOT NULL,
    type text COLLATE "C" NOT NULL,
    payload bytea CHECK (pg_catalog.octet_length(payload) <= 16777216),
    PRIMARY KEY (account, zone, name),
    UNIQUE (account, zone, version)
);

ALTER TABLE quorvi.accounts ENABLE ROW LEVEL SECURITY;
ALTER TABLE quorvi.zones ENABLE ROW LEVEL SECURITY;
ALTER TABLE quorvi.records ENABLE ROW LEVEL SECURITY;
ALTER TABLE quorvi.accounts FORCE ROW LEVEL SECURITY;
ALTER TABLE quorvi.zones FORCE ROW LEVEL SECURITY;
ALTER TABLE quorvi.records FORCE ROW LEVEL SECURITY;
CREATE POLICY own ON quorvi.accounts USING (account = CURRENT_USER::text);
CREATE POLICY own ON quorvi.zones USING (account = CURRENT_USER::text);
CREATE POLICY own ON quorvi.records USING (account = CURRENT_USER::text);

GRANT SELECT, DELETE, INSERT (account), UPDATE (version) ON quorvi.accounts TO quorvi_accounts;
GRANT SELECT, INSERT, UPDATE, DELETE ON quorvi.zones, quorvi.records TO quorvi_accounts;
