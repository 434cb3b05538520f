-- The delivered database. The build makes db1.mdb of it.
-- Text columns ignore case; the connection extends that to all of Unicode. Indexes stand on number
-- columns only, so that any tool can read the file.
PRAGMA journal_mode = DELETE;
PRAGMA user_version = 1;
BEGIN;

CREATE TABLE songs (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    title TEXT COLLATE NOCASE,
    artist TEXT COLLATE NOCASE,
    dakey TEXT COLLATE NOCASE,
    cat1 TEXT COLLATE NOCASE,
    cat2 TEXT COLLATE NOCASE,
    cat3 TEXT COLLATE NOCASE,
    cat4 TEXT COLLATE NOCASE,
    cat5 TEXT COLLATE NOCASE,
    playlist TEXT COLLATE NOCASE,
    fileLoco TEXT COLLATE NOCASE,
    CCLI TEXT COLLATE NOCASE,
    soundFile TEXT COLLATE NOCASE
);

CREATE TABLE categories (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    name TEXT COLLATE NOCASE,
    description TEXT COLLATE NOCASE
);

CREATE TABLE played_on (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    title TEXT COLLATE NOCASE,
    played_date TEXT COLLATE NOCASE,
    songID INTEGER
);
-- Lists and reports read the dates of one song at a time.
CREATE INDEX played_on_song ON played_on (songID);

CREATE TABLE special_music (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    song_name TEXT COLLATE NOCASE,
    play_date TEXT COLLATE NOCASE,
    remind_schedule TEXT COLLATE NOCASE,
    remind_interval TEXT COLLATE NOCASE
);

CREATE TABLE prefs (
    var_name TEXT COLLATE NOCASE,
    var_value TEXT COLLATE NOCASE
);

CREATE TABLE notes (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    post_date TEXT COLLATE NOCASE,
    notes TEXT COLLATE NOCASE,
    notify_date TEXT COLLATE NOCASE
);

CREATE TABLE personell (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    fName TEXT COLLATE NOCASE,
    lName TEXT COLLATE NOCASE,
    role TEXT COLLATE NOCASE,
    role2 TEXT COLLATE NOCASE,
    role3 TEXT COLLATE NOCASE,
    address TEXT COLLATE NOCASE,
    city TEXT COLLATE NOCASE,
    state TEXT COLLATE NOCASE,
    zip TEXT COLLATE NOCASE,
    phone TEXT COLLATE NOCASE,
    cell TEXT COLLATE NOCASE,
    email TEXT COLLATE NOCASE,
    vDays TEXT COLLATE NOCASE,
    excludeScheduling TEXT COLLATE NOCASE
);

CREATE TABLE schedule (
    player TEXT COLLATE NOCASE,
    instrument TEXT COLLATE NOCASE,
    pdate TEXT COLLATE NOCASE
);

CREATE TABLE vacation (
    ID INTEGER PRIMARY KEY AUTOINCREMENT
);

CREATE TABLE transpose (
    colName TEXT COLLATE NOCASE,
    noteValue TEXT COLLATE NOCASE
);

-- Every key has its row from the start: the program only ever updates them. The mail window reads
-- the rows in this order, and EmailPassword after EmailPassRemember.
INSERT INTO prefs (var_name, var_value) VALUES
    ('NotesOnStartUp', 'true'),
    ('DefaultSetList', ''),
    ('SchedOnStartUp', 'false'),
    ('ScedToUse', ''),
    ('POPauthentication', 'false'),
    ('SMTPauthentication', 'false'),
    ('EmailPassRemember', 'false'),
    ('EmailPassword', '');

-- A note's name is looked for in "rootnote" letter by letter, and the first entry that holds all
-- its letters wins. An entry of two names can catch a name that is meant for a later one, so only
-- C#:Db and G#:Ab stand together; D#, Gb and A#, the rarest in worship charts, are given up: they
-- are caught by C#:Db, G#:Ab and G#:Ab. C C# Db D Eb E F F# G G# Ab A Bb B find their own pitch.
-- Every key row gives the spellings that players use, so that a step up and the same step down
-- give the same chord again.
INSERT INTO transpose (colName, noteValue) VALUES
    ('rootnote', 'C,C#:Db,D,Eb,E,F,F#,G,G#:Ab,A,Bb,B'),
    ('p1', 'C#,D,Eb,E,F,F#,G,Ab,A,Bb,B,C'),
    ('p2', 'D,Eb,E,F,F#,G,Ab,A,Bb,B,C,C#'),
    ('p3', 'Eb,E,F,F#,G,Ab,A,Bb,B,C,C#,D'),
    ('p4', 'E,F,F#,G,Ab,A,Bb,B,C,C#,D,Eb'),
    ('p5', 'F,F#,G,Ab,A,Bb,B,C,C#,D,Eb,E'),
    ('p6', 'F#,G,Ab,A,Bb,B,C,C#,D,Eb,E,F'),
    ('p7', 'G,Ab,A,Bb,B,C,C#,D,Eb,E,F,F#'),
    ('p8', 'Ab,A,Bb,B,C,C#,D,Eb,E,F,F#,G'),
    ('p9', 'A,Bb,B,C,C#,D,Eb,E,F,F#,G,Ab'),
    ('p10', 'Bb,B,C,C#,D,Eb,E,F,F#,G,Ab,A'),
    ('p11', 'B,C,C#,D,Eb,E,F,F#,G,Ab,A,Bb'),
    ('p12', 'C,C#,D,Eb,E,F,F#,G,Ab,A,Bb,B'),
    ('n1', 'B,C,C#,D,Eb,E,F,F#,G,Ab,A,Bb'),
    ('n2', 'Bb,B,C,C#,D,Eb,E,F,F#,G,Ab,A'),
    ('n3', 'A,Bb,B,C,C#,D,Eb,E,F,F#,G,Ab'),
    ('n4', 'Ab,A,Bb,B,C,C#,D,Eb,E,F,F#,G'),
    ('n5', 'G,Ab,A,Bb,B,C,C#,D,Eb,E,F,F#'),
    ('n6', 'F#,G,Ab,A,Bb,B,C,C#,D,Eb,E,F'),
    ('n7', 'F,F#,G,Ab,A,Bb,B,C,C#,D,Eb,E'),
    ('n8', 'E,F,F#,G,Ab,A,Bb,B,C,C#,D,Eb'),
    ('n9', 'Eb,E,F,F#,G,Ab,A,Bb,B,C,C#,D'),
    ('n10', 'D,Eb,E,F,F#,G,Ab,A,Bb,B,C,C#'),
    ('n11', 'C#,D,Eb,E,F,F#,G,Ab,A,Bb,B,C'),
    ('n12', 'C,C#,D,Eb,E,F,F#,G,Ab,A,Bb,B');

COMMIT;
