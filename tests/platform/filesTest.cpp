#include "platform/files.h"

#include <sys/resource.h>

#include <QFile>
#include <csignal>

#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

using FilesTest = TemporaryProgram;

TEST_F(FilesTest, ACopyReplacesTheTargetOrLeavesIt) {
    files::write(at(u"small"_s), {"one", "two"});
    files::write(at(u"large"_s), {QByteArray(300000, 'x')});
    files::copy(at(u"small"_s), at(u"target"_s));
    EXPECT_EQ(content(u"target"_s), "onetwo");
    EXPECT_EQ(failureOf([&] { files::copy(at(u"missing"_s), at(u"target"_s)); }), 53);
    EXPECT_EQ(failureOf([&] { files::copy(at(u"small"_s), at(u"no/target"_s)); }), 75);
    EXPECT_EQ(failureOf([&] { files::copy(folder(), at(u"target"_s)); }), 53);
    // Writing beyond this size fails as it does on a full disk.
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    const rlimit tight{200000, usual.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &tight);
    EXPECT_EQ(failureOf([&] { files::copy(at(u"large"_s), at(u"target"_s)); }), 61);
    setrlimit(RLIMIT_FSIZE, &usual);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(content(u"target"_s), "onetwo");
    files::copy(at(u"large"_s), at(u"target"_s));
    EXPECT_EQ(content(u"target"_s).size(), 300000);
}

TEST_F(FilesTest, WhatTheProgramWritesIsItsOwnersAlone) {
    files::write(at(u"own"_s), {"x"});
    EXPECT_EQ(QFile::permissions(at(u"own"_s)) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    EXPECT_EQ(failureOf([&] { files::readAll(at(u"missing"_s)); }), 53);
}
