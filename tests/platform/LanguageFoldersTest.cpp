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

TEST(LanguageFolders, UsersCopyWinsAndWritesGoWhereFilesCanBeMade) {
    QTemporaryDir program;
    QTemporaryDir user;
    test::ScriptedServices services;
    services.ProgramFolderPath = program.path();
    services.UserDataFolderPath = QDir(user.path()).filePath(QStringLiteral("Quarle"));
    Touch(program.path(), "deutsch.lng");
    Touch(program.path(), "English.lng");
    Touch(program.path(), "readme.txt");

    EXPECT_EQ(LanguageWriteFolder(services), program.path());
    services.ReadOnlyFolders = {program.path()};
    EXPECT_EQ(LanguageWriteFolder(services), services.UserDataFolderPath); // made on demand
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

    services.ReadOnlyFolders.append(services.UserDataFolderPath);
    EXPECT_EQ(LanguageWriteFolder(services), QString());
}

} // namespace
} // namespace quarle::platform
