#include "FakeHost.h"

#include <QDialog>
#include <QVector>

#include <host/Change.h>
#include <host/CommonUtils.h>
#include <host/IPluginContainer.h>
#include <host/Startup.h>

namespace {

class FakeContainer : public IPluginContainer
{
public:
    bool IsPluginAvailable(const QString &id) override
    {
        return fakeHost().availablePlugins.contains(id);
    }
    QObject *GetPlugin(const QString &id, int kind) override
    {
        fakeHost().askedPlugins << FakeAskedPlugin { id, kind };
        return fakeHost().plugin;
    }
};

void note(QStringList &list, const QString &text)
{
    if (!list.contains(text))
        list << text;
}

} // namespace

FakeHost &fakeHost()
{
    static FakeHost host;
    return host;
}

void resetFakeHost()
{
    fakeHost() = FakeHost();
}

IPluginContainer *Startup::GetPluginContainer()
{
    static FakeContainer container;
    return fakeHost().hasContainer ? &container : nullptr;
}

QString Change::tr(const QString &context, const QString &key)
{
    note(fakeHost().translationContexts, context);
    return fakeHost().texts.value(key, key) + fakeHost().language;
}

int CommonUtils::ShowMessage(QMessageBox::Icon icon, QWidget *parent, const QString &title,
                             const QString &text, const QString &button0, const QString &button1,
                             const QString &button2, Qt::WindowFlags flags, QDialog **dialog)
{
    fakeHost().messages << FakeMessage {
        icon,  parent,           title, text, QStringList() << button0 << button1 << button2,
        flags, dialog != nullptr
    };
    if (fakeHost().duringMessage)
        fakeHost().duringMessage();
    return fakeHost().messageAnswer;
}

void CommonUtils::MoveCentre(QDialog *dialog)
{
    fakeHost().placements << QLatin1String("centre ") + dialog->objectName();
}

void CommonUtils::MoveRelatedCentre(QDialog *dialog)
{
    fakeHost().placements << QLatin1String("relative ") + dialog->objectName();
}

// An amount is written as "<number> <first unit of the table>", so that a text shows its table.
QString CommonUtils::SpeedFluxToString(QVector<TagUnits> units, unsigned long long value,
                                       QString module)
{
    note(fakeHost().formatterModules, module);
    const QString unit = units.isEmpty() ? QStringLiteral("unitless") : units.first().name;
    return QString::number(value) + QLatin1Char(' ') + unit;
}

// The caption is the first unit's text identifier.
QString CommonUtils::SpeedUnitToString(QVector<TagUnits> units, QString module)
{
    note(fakeHost().formatterModules, module);
    return units.isEmpty() ? QStringLiteral("unitless") : units.first().langResID;
}

QString CommonUtils::GetPluginLibraryPath()
{
    return fakeHost().libraryPath;
}

QString CommonUtils::getUserDataDirectory()
{
    return fakeHost().userDataDirectory;
}
