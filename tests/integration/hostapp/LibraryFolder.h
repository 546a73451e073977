#pragma once
// A library path of a test's own, filled with the test modules and with damaged copies of them.

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

class LibraryFolder
{
public:
    //! What GetPluginLibraryPath() would answer.
    [[nodiscard]] QString path() const;
    //! Makes the folder "plugins" without anything in it.
    void makePlugins();
    //! Makes the folder \a name among the plug-ins. Its path.
    QString makeFolder(const QString &name);
    //! Puts module \a module into folder \a folder. The file's path.
    QString addModule(const QString &folder, const QString &module);
    //! Puts a file of \a content there. Its path.
    QString addFile(const QString &folder, const QString &name, const QByteArray &content);
    //! The bytes of module \a module.
    [[nodiscard]] static QByteArray contentOf(const QString &module);
    //! The bytes of module \a module as if it had been built with the next major version of Qt.
    [[nodiscard]] static QByteArray contentOfNextQt(const QString &module);

private:
    QTemporaryDir m_root;
};
