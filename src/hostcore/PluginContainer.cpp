#include "PluginContainer.h"

#include "PluginBuild.h"

#include <host/Change.h>
#include <host/IBasePlugin.h>

#include <QDir>
#include <QLibrary>
#include <QPluginLoader>
#include <QSet>

struct PluginContainer::Loaded
{
    QString file;
    QPointer<QObject> object; // the module's
    IBasePlugin *plugin = nullptr; // the same object
};

static QString hostText(const char *key)
{
    return Change::tr(QStringLiteral("skylet"), QLatin1String(key));
}

QString PluginFailure::text() const
{
    return hostText("HOST_PLUGIN_FAILURE").arg(QDir::toNativeSeparators(file), reason);
}

PluginContainer::PluginContainer(const QString &libraryPath)
    : m_folder(libraryPath + QLatin1String("/plugins"))
{
}

PluginContainer::~PluginContainer() = default;

void PluginContainer::load()
{
    const QDir folder(m_folder);
    if (!folder.exists()) {
        addFailure({ m_folder, hostText("HOST_PLUGIN_NO_FOLDER") });
        return;
    }
    const QStringList names = folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    if (names.isEmpty())
        addFailure({ m_folder, hostText("HOST_PLUGIN_FOLDER_EMPTY") });
    for (const QString &name : names)
        loadFolder(folder.filePath(name));
}

void PluginContainer::loadFolder(const QString &folder)
{
    QSet<QString> seen; // version links lead to the same file
    const QFileInfoList entries = QDir(folder).entryInfoList(QDir::Files, QDir::Name);
    for (const QFileInfo &entry : entries) {
        const QString file = entry.canonicalFilePath();
        if (!QLibrary::isLibrary(entry.fileName()) || seen.contains(file))
            continue;
        seen.insert(file);
        loadFile(entry.absoluteFilePath());
    }
    if (seen.isEmpty())
        addFailure({ folder, hostText("HOST_PLUGIN_NO_LIBRARY") });
}

void PluginContainer::loadFile(const QString &file)
{
    if (!QFileInfo(file).isReadable() || QFileInfo(file).size() == 0) {
        addFailure({ file, hostText("HOST_PLUGIN_NOT_READABLE") });
        return;
    }
    const int qtMajor = PluginBuild::qtMajorOfFile(file);
    if (qtMajor != 0 && qtMajor != QT_VERSION_MAJOR) { // Qt's own words for this are not clear
        addFailure({ file, hostText("HOST_PLUGIN_WRONG_QT").arg(qtMajor).arg(QT_VERSION_MAJOR) });
        return;
    }
    QPluginLoader loader(file);
    // A symbol that is missing shows here and not in the middle of a call; nothing is ever
    // unloaded.
    loader.setLoadHints(QLibrary::ResolveAllSymbolsHint | QLibrary::PreventUnloadHint);
    QObject *object = loader.instance();
    if (!object) {
        QString reason = loader.errorString();
        reason.replace(file,
                       QFileInfo(file).fileName()); // the message names the whole path already
        addFailure({ file, hostText("HOST_PLUGIN_NOT_LOADED").arg(reason) });
        return;
    }
    auto *plugin = qobject_cast<IBasePlugin *>(object);
    if (!plugin) {
        addFailure({ file, hostText("HOST_PLUGIN_FOREIGN") });
        return;
    }
    if (IBasePlugin *other = find(plugin->GetCLSID())) {
        addFailure({ file, hostText("HOST_PLUGIN_TWICE").arg(other->GetPluginName()) });
        return;
    }
    auto loaded = std::make_unique<Loaded>();
    loaded->file = file;
    loaded->object = object;
    loaded->plugin = plugin;
    m_loaded.push_back(std::move(loaded));
}

QVector<PluginFailure> PluginContainer::failures() const
{
    return m_failures;
}

void PluginContainer::addFailure(const PluginFailure &failure)
{
    m_failures.append(failure);
}

QVector<QObject *> PluginContainer::plugins() const
{
    QVector<QObject *> objects;
    for (const auto &loaded : m_loaded) {
        if (loaded->object)
            objects.append(loaded->object);
    }
    return objects;
}

QString PluginContainer::fileOf(const QObject *plugin) const
{
    for (const auto &loaded : m_loaded) {
        if (loaded->object == plugin)
            return loaded->file;
    }
    return QString();
}

void PluginContainer::addBuiltIn(const QString &id, QObject *object, int kind)
{
    m_builtIns.insert(id, { object, kind });
}

void PluginContainer::removeBuiltIn(const QString &id)
{
    m_builtIns.remove(id);
}

void PluginContainer::destroyPlugins()
{
    for (auto loaded = m_loaded.rbegin(); loaded != m_loaded.rend(); ++loaded) {
        if ((*loaded)->object)
            (*loaded)->plugin->OnDestroy();
    }
}

IBasePlugin *PluginContainer::find(const QString &id) const
{
    if (id.isEmpty()) // a plug-in without an identifier cannot be asked for
        return nullptr;
    for (const auto &loaded : m_loaded) {
        if (loaded->object && loaded->plugin->GetCLSID() == id)
            return loaded->plugin;
    }
    return nullptr;
}

bool PluginContainer::IsPluginAvailable(const QString &id)
{
    return m_builtIns.contains(id) || find(id);
}

QObject *PluginContainer::GetPlugin(const QString &id, int kind)
{
    const auto builtIn = m_builtIns.constFind(id);
    if (builtIn != m_builtIns.constEnd())
        return builtIn->kind == kind ? builtIn->object.data() : nullptr;
    QObject *object = nullptr;
    IBasePlugin *plugin = find(id);
    return plugin && plugin->QueryInterface(kind, &object) ? object : nullptr;
}
