// Doing something with the rights of an ordinary user, to whom the permissions of files mean something.
#pragma once

#include <QFile>
#include <QString>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace wrapio {

/// While it exists, this thread has the file rights of an ordinary user. Does nothing when it has no others anyway.
class OrdinaryUser {
public:
    OrdinaryUser()
        : m_wasRoot(::geteuid() == 0) {
        if (m_wasRoot) {
            EXPECT_EQ(::syscall(SYS_setresuid, -1, identifier, -1), 0);
        }
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() {
        if (m_wasRoot) {
            EXPECT_EQ(::syscall(SYS_setresuid, -1, 0, -1), 0);
        }
    }

    /// Gives him the entry at `path`, and lets him through to it.
    static void give(const QString& path) {
        if (::geteuid() != 0)
            return;
        ASSERT_EQ(::lchown(QFile::encodeName(path).constData(), identifier, identifier), 0);
        for (QString folder = path; folder.count(u'/') > 1;) {
            folder.truncate(folder.lastIndexOf(u'/'));
            letThrough(QFile::encodeName(folder));
        }
    }

private:
    static void letThrough(const QByteArray& folder) {
        struct stat status {};
        ASSERT_EQ(::stat(folder.constData(), &status), 0);
        constexpr mode_t others = S_IXGRP | S_IXOTH;
        if ((status.st_mode & others) != others) {
            ASSERT_EQ(::chmod(folder.constData(), (status.st_mode & 07777U) | others), 0);
        }
    }

    static constexpr int identifier = 65534;  ///< "nobody"
    bool m_wasRoot;
};

}  // namespace wrapio
