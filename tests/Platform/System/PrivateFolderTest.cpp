#include "Platform/Linux/PrivateFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace wrapio {

using namespace Qt::StringLiterals;

TEST(PrivateFolder, is_made_when_it_is_asked_for_and_gone_with_its_owner) {
    const QTemporaryDir parent;
    {
        PrivateFolder folder(parent.path());
        EXPECT_TRUE(QDir(parent.path()).isEmpty());
        const QString path = folder.path();
        EXPECT_EQ(folder.path(), path);
        EXPECT_TRUE(QDir(path).mkdir(u"inside"_s));
    }
    EXPECT_TRUE(QDir(parent.path()).isEmpty());
}

TEST(PrivateFolder, lets_nobody_else_in) {
    const QTemporaryDir parent;
    const auto owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    const auto user = QFile::ReadUser | QFile::WriteUser | QFile::ExeUser;
    PrivateFolder folder(parent.path());
    EXPECT_EQ(QFileInfo(folder.path()).permissions(), owner | user);
}

TEST(PrivateFolder, is_another_one_for_every_owner) {
    const QTemporaryDir parent;
    PrivateFolder one(parent.path());
    PrivateFolder other(parent.path());
    EXPECT_NE(one.path(), other.path());
}

TEST(PrivateFolder, is_made_in_a_folder_that_is_missing) {
    const QTemporaryDir parent;
    PrivateFolder folder(parent.filePath(u"a/b"_s));
    EXPECT_TRUE(QFileInfo(folder.path()).isDir());
}

TEST(PrivateFolder, that_cannot_be_made_is_a_path_that_does_not_exist) {
    PrivateFolder folder(u"/proc/self/nowhere"_s);
    EXPECT_FALSE(QFileInfo::exists(folder.path()));
}

}  // namespace wrapio
