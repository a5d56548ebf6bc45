#include "platform/LanguageFolders.h"

#include "support/ScriptedServices.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace quarle::platform {
namespace {

void Touch(const QString& folder, const char* name) {
    QFile file(QDir(folder).filePath(QString::fromLatin1(name)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
}

TEST(LanguageFolders, UsersCopyWinsAndIsListedOnce) {
    QTemporaryDir program;
    QTemporaryDir user;
    test::ScriptedServices services;
    services.ProgramFolderPath = program.path();
    services.UserDataFolderPath = QDir(user.path()).filePath(QStringLiteral("Quarle"));
    Touch(program.path(), "deutsch.lng");
    Touch(program.path(), "English.lng");
    Touch(program.path(), "readme.txt");
    ASSERT_TRUE(QDir().mkpath(services.UserDataFolderPath));
    Touch(services.UserDataFolderPath, "english.lng");
    Touch(services.UserDataFolderPath, "francais.lng");

    EXPECT_EQ(LanguageFileNames(services),
              QStringList({"deutsch.lng", "english.lng", "francais.lng"}));
    EXPECT_EQ(LanguageReadPath(services, QStringLiteral("english.lng")),
              QDir(services.UserDataFolderPath).filePath(QStringLiteral("english.lng")));
    EXPECT_EQ(LanguageReadPath(services, QStringLiteral("deutsch.lng")),
              QDir(program.path()).filePath(QStringLiteral("deutsch.lng")));
    EXPECT_EQ(LanguageReadPath(services, QStringLiteral("none.lng")),
              QDir(program.path()).filePath(QStringLiteral("none.lng")));
}

// A file is written where it is read from from then on.
TEST(LanguageFolders, WritesGoWhereTheFileIsReadFrom) {
    enum Where { None, Program, User };
    struct Case {
        bool inUser, inProgram, programReadOnly, userReadOnly;
        Where written;
    } const cases[] = {
        {false, false, false, false, Program},
        {false, false, true, false, User}, // the user's folder made on demand
        {false, true, false, false, Program},
        {false, true, true, false, User},
        {true, true, false, false, User}, // not behind the user's copy
        {true, false, false, false, User},
        {true, true, false, true, None},
        {false, false, true, true, None},
    };
    for (const Case& c : cases) {
        QTemporaryDir program;
        QTemporaryDir user;
        test::ScriptedServices services;
        services.ProgramFolderPath = program.path();
        services.UserDataFolderPath = QDir(user.path()).filePath(QStringLiteral("Quarle"));
        if (c.inUser) {
            ASSERT_TRUE(QDir().mkpath(services.UserDataFolderPath));
            Touch(services.UserDataFolderPath, "francais.lng");
        }
        if (c.inProgram) {
            Touch(program.path(), "francais.lng");
        }
        if (c.programReadOnly) {
            services.ReadOnlyFolders.append(program.path());
        }
        if (c.userReadOnly) {
            services.ReadOnlyFolders.append(services.UserDataFolderPath);
        }
        const QString folder = LanguageWriteFolder(services, QStringLiteral("francais.lng"));
        const QString expected[] = {QString(), program.path(), services.UserDataFolderPath};
        EXPECT_EQ(folder, expected[c.written]) << &c - cases;
        if (!folder.isEmpty()) {
            Touch(folder, "francais.lng");
            EXPECT_EQ(LanguageReadPath(services, QStringLiteral("francais.lng")),
                      QDir(folder).filePath(QStringLiteral("francais.lng")))
                << &c - cases;
        }
    }
}

} // namespace
} // namespace quarle::platform
