#pragma once
// A host core library in memory: the frozen classes, with state that a test sets and reads.

#include <QHash>
#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <functional>

struct FakeMessage
{
    QMessageBox::Icon icon;
    QPointer<QWidget> parent;
    QString title;
    QString text;
    QStringList buttons;
    Qt::WindowFlags flags;
    bool wantsDialog; //!< the caller asked for the box itself
};

struct FakeAskedPlugin
{
    QString id;
    int kind;
};

struct FakeHost
{
    QString libraryPath; //!< GetPluginLibraryPath()
    QString userDataDirectory;
    QHash<QString, QString> texts; //!< by key; a key without one is its own text
    QString language; //!< appended to every text
    bool hasContainer = true;
    QStringList availablePlugins;
    QPointer<QObject> plugin; //!< what every GetPlugin answers
    QList<FakeAskedPlugin> askedPlugins;
    QStringList placements; //!< "centre NAME" and "relative NAME" of dialogs that were moved
    QList<int> dialogTypes; //!< of each dialog frame that was made
    QList<Qt::WindowFlags> dialogFlags; //!< the same
    QStringList translationContexts; //!< contexts asked for, without repeats
    QStringList formatterModules; //!< modules given to the formatters, without repeats
    int messageAnswer = 0;
    QList<FakeMessage> messages;
    std::function<void()> duringMessage; //!< runs while a message is open
};

//! The state behind the fakes.
FakeHost &fakeHost();
//! Back to an empty state.
void resetFakeHost();
