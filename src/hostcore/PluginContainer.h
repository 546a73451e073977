#pragma once

#include <host/HostCoreExport.h>
#include <host/IPluginContainer.h>

#include <QHash>
#include <QPointer>
#include <QString>
#include <QVector>

#include <memory>
#include <vector>

QT_BEGIN_NAMESPACE
class QPluginLoader;
QT_END_NAMESPACE

class IBasePlugin;
class IUIPlugin;

//! Why a plug-in is not there.
struct HOST_CORE_EXPORT PluginFailure
{
    QString file; //!< the file or folder at fault
    QString reason; //!< in the language of the moment it happened
    //! Both, as one line.
    [[nodiscard]] QString text() const;
};

//! The host's plug-ins: every library in the sub-folders of a "plugins" folder. One that is
//! missing, foreign or broken leaves a failure behind and the others are loaded all the same.
//! Modules are never unloaded: their objects live as long as the process. GUI thread.
class HOST_CORE_EXPORT PluginContainer : public IPluginContainer
{
public:
    //! \a libraryPath holds the "plugins" folder. Loads nothing yet.
    explicit PluginContainer(const QString &libraryPath);
    ~PluginContainer() override;
    PluginContainer(const PluginContainer &) = delete;
    PluginContainer &operator=(const PluginContainer &) = delete;

    //! Loads every plug-in, in the order of the folders' names. Once.
    void load();
    [[nodiscard]] QVector<PluginFailure> failures() const;
    //! Adds a failure that shows only later, such as a refused start.
    void addFailure(const PluginFailure &failure);
    //! What was loaded, in order.
    [[nodiscard]] QVector<QObject *> plugins() const;
    //! The file that \a plugin came from; empty for an unknown one.
    [[nodiscard]] QString fileOf(const QObject *plugin) const;
    //! Declares that the host itself is the plug-in \a id; \a object, where given, answers requests
    //! of \a kind and no others. Not owned.
    void addBuiltIn(const QString &id, QObject *object = nullptr, int kind = 0);
    void removeBuiltIn(const QString &id);
    //! Tells every plug-in that the host ends, the latest loaded first.
    void destroyPlugins();

    bool IsPluginAvailable(const QString &id) override;
    QObject *GetPlugin(const QString &id, int kind) override;

private:
    struct Loaded;
    struct BuiltIn
    {
        QPointer<QObject> object;
        int kind = 0;
    };
    void loadFolder(const QString &folder);
    void loadFile(const QString &file);
    [[nodiscard]] IBasePlugin *find(const QString &id) const;

    const QString m_folder;
    std::vector<std::unique_ptr<Loaded>> m_loaded;
    QVector<PluginFailure> m_failures;
    QHash<QString, BuiltIn> m_builtIns;
};
