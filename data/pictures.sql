-- The picture file pictures.ddb.

CREATE TABLE tPicture (
    PicID INTEGER PRIMARY KEY AUTOINCREMENT,
    PicDVDID INTEGER,
    PicSkup TEXT COLLATE CZECH,
    PicTyp TEXT COLLATE CZECH,
    PicDat BLOB,
    PicSize INTEGER
);
CREATE INDEX tPicture_PicDVDID_PicSkup ON tPicture (PicDVDID, PicSkup);
