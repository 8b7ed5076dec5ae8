#include "platform/files.h"

#include <sys/resource.h>

#include <QFile>
#include <csignal>

#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

namespace {

class FilesTest : public TemporaryProgram {
 protected:
    QString path(const QString& name) const { return folder() + u'/' + name; }
};

}  // namespace

TEST_F(FilesTest, ACopyReplacesTheTargetOrLeavesIt) {
    files::write(path(u"small"_s), {"one", "two"});
    files::write(path(u"large"_s), {QByteArray(300000, 'x')});
    files::copy(path(u"small"_s), path(u"target"_s));
    EXPECT_EQ(files::readAll(path(u"target"_s)), "onetwo");
    EXPECT_EQ(failureOf([&] { files::copy(path(u"missing"_s), path(u"target"_s)); }), 53);
    EXPECT_EQ(failureOf([&] { files::copy(path(u"small"_s), path(u"no/target"_s)); }), 75);
    EXPECT_EQ(failureOf([&] { files::copy(folder(), path(u"target"_s)); }), 53);
    // Writing beyond this size fails as it does on a full disk.
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    const rlimit tight{200000, usual.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &tight);
    EXPECT_EQ(failureOf([&] { files::copy(path(u"large"_s), path(u"target"_s)); }), 61);
    setrlimit(RLIMIT_FSIZE, &usual);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(files::readAll(path(u"target"_s)), "onetwo");
    files::copy(path(u"large"_s), path(u"target"_s));
    EXPECT_EQ(files::readAll(path(u"target"_s)).size(), 300000);
}

TEST_F(FilesTest, WhatTheProgramWritesIsItsOwnersAlone) {
    files::write(path(u"own"_s), {"x"});
    EXPECT_EQ(QFile::permissions(path(u"own"_s)) & (QFile::ReadGroup | QFile::ReadOther),
              QFile::Permissions());
    EXPECT_EQ(failureOf([&] { files::readAll(path(u"missing"_s)); }), 53);
}
