-- Zones and records of all accounts. An account is a login role; each row belongs to one and is seen
-- by nobody else, not even by the tables' owner. Every key begins with the account, so that the
-- tables can be partitioned or distributed by it: nothing ever spans two accounts.
CREATE SCHEMA quorvi;
GRANT USAGE ON SCHEMA quorvi TO quorvi_accounts;

-- Which of the numbered files this database has had.
CREATE TABLE quorvi.migrations (
    number integer PRIMARY KEY,
    applied timestamptz NOT NULL DEFAULT pg_catalog.now()
);
GRANT SELECT ON quorvi.migrations TO quorvi_accounts;

-- One row: how this server wants to be used. Without push nothing is announced and devices ask for
-- changes now and then.
CREATE TABLE quorvi.server (
    one boolean PRIMARY KEY DEFAULT true CHECK (one),
    push boolean NOT NULL DEFAULT true
);
INSERT INTO quorvi.server DEFAULT VALUES;
GRANT SELECT ON quorvi.server TO quorvi_accounts;

-- `version` numbers an account's changes. Whoever changes anything counts it up first and so holds
-- the row until the commit: the writers of one account wait for each other, versions are committed
-- in their order, and one who has read up to a version can't have missed a lower one.
-- `id` says whose data it is, also when a role of this name is made again later; it names the
-- account's notifications, and others can't guess it.
CREATE TABLE quorvi.accounts (
    account text COLLATE "C" PRIMARY KEY,
    id uuid NOT NULL DEFAULT pg_catalog.gen_random_uuid(),
    version bigint NOT NULL DEFAULT 0
);

-- A zone that was deleted keeps its row, so that other devices learn of it. `generation` tells a
-- zone from an earlier one of its name, drawn by lot, so that it is another one also after a return
-- to a backup; null while there is none.
CREATE TABLE quorvi.zones (
    account text COLLATE "C" NOT NULL,
    name text COLLATE "C" NOT NULL,
    generation bigint,
    version bigint NOT NULL,  -- of the last change in it, or of its deletion
    PRIMARY KEY (account, name)
);

-- `zone` is the zone's generation. `version` is both the change tag and the place in the sequence
-- of changes. No foreign key: the functions look at the zone while they hold the account, and the
-- check for every row would cost more than the rest of the statement.
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
