-- What version 5 has otherwise than version 4.
BEGIN TRANSACTION;
ALTER TABLE "KT_Users" ADD COLUMN "Failures" INTEGER NOT NULL DEFAULT 0;
ALTER TABLE "KT_Users" ADD COLUMN "FailedAt" REAL NOT NULL DEFAULT 0;
DROP TABLE "KT_Alerts";
CREATE TABLE "KT_Alerts" ("Occurrence" TEXT NOT NULL DEFAULT '',
          "User" TEXT NOT NULL DEFAULT '', "Moment" REAL NOT NULL DEFAULT 0,
          "NextTime" REAL NOT NULL DEFAULT 0, "Due" REAL NOT NULL DEFAULT 0,
          "Dismissed" INTEGER NOT NULL DEFAULT 0, row_id INTEGER PRIMARY KEY);
CREATE UNIQUE INDEX "KT_Alerts_Occurrence" ON "KT_Alerts" ("Occurrence");
CREATE INDEX "KT_Alerts_UserandDue" ON "KT_Alerts" ("User", "Dismissed", "Due");
COMMIT;
PRAGMA user_version = 5;
