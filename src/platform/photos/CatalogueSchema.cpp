#include "platform/photos/CatalogueSchema.h"

namespace exifcard {
namespace {

constexpr const char* kMigrations[] = {
    R"sql(
-- 'change' counts what was ever committed; 'rebuild' is there while the roots are to be read anew.
CREATE TABLE state (name TEXT PRIMARY KEY, value INTEGER NOT NULL) WITHOUT ROWID;
INSERT INTO state VALUES ('change', 1);

CREATE TABLE roots (
    id INTEGER PRIMARY KEY,
    path BLOB NOT NULL UNIQUE,
    kind TEXT NOT NULL,
    source_type INTEGER NOT NULL
);
CREATE TABLE folders (
    id INTEGER PRIMARY KEY,
    root INTEGER NOT NULL,
    path BLOB NOT NULL, -- Below the root.
    UNIQUE (root, path)
);

CREATE TABLE assets (
    id INTEGER PRIMARY KEY,
    uuid TEXT NOT NULL UNIQUE,
    folder INTEGER NOT NULL, -- Of its first file,
    name BLOB NOT NULL, -- as is this.
    media_type INTEGER NOT NULL,
    subtypes INTEGER NOT NULL,
    playback INTEGER NOT NULL,
    source_type INTEGER NOT NULL,
    width INTEGER NOT NULL, -- Upright pixels.
    height INTEGER NOT NULL,
    created REAL, -- Seconds since 1970, as are all moments.
    modified REAL,
    added REAL NOT NULL,
    duration REAL NOT NULL,
    located INTEGER NOT NULL, -- Whether it has the place that follows.
    latitude REAL,
    longitude REAL,
    altitude REAL,
    horizontal_accuracy REAL,
    vertical_accuracy REAL,
    course REAL,
    speed REAL,
    located_at REAL,
    favorite INTEGER NOT NULL,
    hidden INTEGER NOT NULL,
    burst TEXT,
    represents_burst INTEGER NOT NULL,
    burst_selection INTEGER NOT NULL,
    title TEXT,
    rating INTEGER,
    traits INTEGER NOT NULL,
    user_fields INTEGER NOT NULL, -- Bits: what the user changed and no file changes back.
    vanished INTEGER NOT NULL, -- Its files are gone.
    trashed INTEGER NOT NULL, -- Recently deleted.
    changed INTEGER NOT NULL, -- The change that last touched it.
    shown INTEGER GENERATED ALWAYS AS (
        vanished = 0 AND trashed = 0 AND hidden = 0
        AND (burst IS NULL OR represents_burst <> 0 OR burst_selection & 2)) VIRTUAL
);
-- Fetches walk these alone, in both directions, until they have what is asked for.
CREATE INDEX assets_by_creation ON assets
    (created, modified, id, media_type, source_type, favorite, located, subtypes, traits) WHERE shown = 1;
CREATE INDEX assets_by_modification ON assets
    (modified, created, id, media_type, source_type, favorite, located) WHERE shown = 1;
CREATE INDEX favorite_assets ON assets
    (created, modified, id, media_type, source_type, located) WHERE shown = 1 AND favorite = 1;
CREATE INDEX special_assets ON assets
    (created, modified, id, subtypes, traits, playback, source_type)
    WHERE shown = 1 AND (subtypes + traits <> 0 OR playback = 2);
CREATE INDEX recent_assets ON assets (added, id, source_type) WHERE shown = 1;
CREATE INDEX assets_of_folder ON assets (folder, created, modified, id) WHERE shown = 1;
CREATE INDEX assets_of_burst ON assets (burst) WHERE burst IS NOT NULL;
-- What the backup keeps.
CREATE INDEX user_assets ON assets (id)
    WHERE favorite <> 0 OR hidden <> 0 OR user_fields <> 0 OR trashed <> 0;
CREATE INDEX assets_by_change ON assets (changed);

CREATE TABLE files (
    id INTEGER PRIMARY KEY,
    asset INTEGER NOT NULL,
    folder INTEGER NOT NULL,
    name BLOB NOT NULL,
    type INTEGER NOT NULL,
    type_identifier TEXT NOT NULL,
    size INTEGER NOT NULL,
    modified INTEGER NOT NULL, -- Nanoseconds since 1970.
    changed INTEGER NOT NULL,
    inode INTEGER NOT NULL,
    quick INTEGER NOT NULL, -- Fingerprints; 0 where they were not taken.
    whole INTEGER NOT NULL,
    content TEXT NOT NULL, -- What the halves of a live photo share; may be empty.
    video_offset INTEGER NOT NULL, -- Of the video within a motion photo.
    video_length INTEGER NOT NULL,
    orientation INTEGER NOT NULL, -- EXIF; 0 where it is not known.
    UNIQUE (folder, name)
);
CREATE INDEX files_of_asset ON files (asset, type);
CREATE INDEX files_by_fingerprint ON files (quick) WHERE quick <> 0;
CREATE INDEX files_by_content ON files (folder, content) WHERE content <> '';

-- The user's albums and, with a folder, those that the disk makes.
CREATE TABLE albums (
    id INTEGER PRIMARY KEY,
    uuid TEXT NOT NULL UNIQUE,
    subtype INTEGER NOT NULL,
    title TEXT,
    position INTEGER NOT NULL,
    folder INTEGER UNIQUE,
    changed INTEGER NOT NULL
);
CREATE TABLE album_assets (
    album INTEGER NOT NULL,
    position INTEGER NOT NULL,
    asset INTEGER NOT NULL,
    PRIMARY KEY (album, position)
) WITHOUT ROWID;
CREATE UNIQUE INDEX albums_of_asset ON album_assets (asset, album);
)sql",
    R"sql(
-- Whether a drive of its own was mounted there when the folder was last looked at.
ALTER TABLE folders ADD COLUMN is_mount_point INTEGER NOT NULL DEFAULT 0;
)sql",
};

} // namespace

std::span<const char* const> catalogueMigrations() {
    return kMigrations;
}

} // namespace exifcard
