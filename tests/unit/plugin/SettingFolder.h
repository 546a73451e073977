#pragma once
// A user data folder and a plug-in folder of a test's own, which the fake host names.

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

class SettingFolder
{
public:
    //! The user data folder is empty; the plug-in folder has settingTemplate().
    SettingFolder();

    [[nodiscard]] QString rootPath() const;
    //! The user data folder, without a separator at its end.
    [[nodiscard]] QString userFolder() const;
    [[nodiscard]] QString userFile() const;
    [[nodiscard]] QString temporaryFile() const;
    [[nodiscard]] QString templateFile() const;
    //! The names in the user data folder.
    [[nodiscard]] QStringList userNames() const;

    void write(const QString &path, const QByteArray &content) const;
    //! The content of \a path, of a link that of its file; "missing" where there is none.
    [[nodiscard]] QByteArray content(const QString &path) const;

    //! A template with the values "t0" to "t13".
    [[nodiscard]] static QByteArray settingTemplate();
    //! What is made of settingTemplate() today.
    [[nodiscard]] static QByteArray firstFile();
    //! Seventeen values: \a prefix and a number.
    [[nodiscard]] static QList<QString> values(const QString &prefix);
    //! The saved file of values(\a prefix).
    [[nodiscard]] static QByteArray savedFile(const QString &prefix);

private:
    QTemporaryDir m_root;
};
