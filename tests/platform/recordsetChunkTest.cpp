#include "core/mDatabase.h"
#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

namespace {

class RecordsetChunkTest : public TemporaryProgram {
 protected:
    void SetUp() override {
        connection_.Open(connectionString(pictures()));
        rows.Open(u"SELECT * from tPicture"_s, connection_);
    }

    static void append(const ado::Recordset& to, const QByteArray& bytes, qsizetype piece) {
        for (qsizetype at = 0; at < bytes.size(); at += piece)
            to.Fields(u"PicDat").AppendChunk(bytes.mid(at, piece));
    }

    static QByteArray take(const ado::Recordset& from, qint64 piece) {
        QByteArray bytes;
        for (;;) {
            const QByteArray chunk = from.Fields(u"picdat").GetChunk(piece);
            if (chunk.isEmpty()) return bytes;
            bytes += chunk;
        }
    }

    ado::Connection connection_;
    ado::Recordset rows;
};

}  // namespace

TEST_F(RecordsetChunkTest, BytesComeBackWhateverThePieces) {
    for (const qsizetype length : {1, 99999, 100000, 65536, 65537, 100001, 250003}) {
        for (const qsizetype piece : {qsizetype{1000}, qsizetype{65536}, qsizetype{100001}}) {
            SCOPED_TRACE(testing::Message() << length << " bytes in pieces of " << piece);
            const QByteArray bytes = noise(length);
            rows.AddNew();
            append(rows, bytes, piece);
            rows.Fields(u"PicSize").setValue(qint32(length));
            rows.Update();
            EXPECT_TRUE(rows.Fields(u"PicDat").GetChunk(0).isEmpty());
            EXPECT_EQ(take(rows, piece + 7), bytes);
            EXPECT_TRUE(rows.Fields(u"PicDat").GetChunk(10).isEmpty());
            EXPECT_EQ(rows.Fields(u"PicDat").Value(), DbValue(bytes));
        }
    }
}

TEST_F(RecordsetChunkTest, TheFirstPieceReplacesAndTheOthersAdd) {
    rows.AddNew();
    append(rows, "abc", 1);
    EXPECT_EQ(rows.Fields(u"PicDat").Value(), DbValue(QByteArray("abc")));
    rows.Update();
    rows.Fields(u"PicSkup").setValue(u"O"_s);
    rows.Update();
    EXPECT_EQ(take(rows, 2), "abc");
    append(rows, "XY", 1);
    EXPECT_EQ(take(rows, 2), "");  // the stored value has been read to its end, the new one is not stored yet
    rows.Update();
    EXPECT_EQ(take(rows, 100), "XY");
    rows.Fields(u"PicDat").setValue(DbValue());
    rows.Update();
    EXPECT_TRUE(rows.Fields(u"PicDat").Value().isNull());
    EXPECT_TRUE(take(rows, 100).isEmpty());
}

TEST_F(RecordsetChunkTest, BytesNotStoredAreLostWithoutATraceInTheFile) {
    rows.AddNew();
    append(rows, noise(300000), 100000);
    rows.Close();
    rows.Open(u"SELECT * from tPicture"_s, connection_);
    EXPECT_TRUE(rows.Eof());
}
