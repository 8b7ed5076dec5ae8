-- The picture file pictures.ddb. PicDat comes last: only there does the engine make room for bytes without having
-- them in memory.

CREATE TABLE tPicture (
    PicID INTEGER PRIMARY KEY AUTOINCREMENT,
    PicDVDID INTEGER,
    PicSkup TEXT COLLATE CZECH,
    PicTyp TEXT COLLATE CZECH,
    PicSize INTEGER,
    PicDat BLOB
);
CREATE INDEX tPicture_PicDVDID_PicSkup ON tPicture (PicDVDID, PicSkup);
