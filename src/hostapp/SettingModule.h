#pragma once

#include <QPointer>
#include <QVector>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

class ISettingUIPlugin;

//! A plug-in's page among the settings. Its controller may end at any time: it has no name then,
//! is not active and nothing is left to save.
class SettingModule
{
public:
    //! What a plug-in answers with its controller, a QObject.
    static constexpr int kControllerId = 0x1002;

    SettingModule() = default;
    //! \a controller may be null, and may have no settings.
    explicit SettingModule(QObject *controller);

    //! Of the entry, in the language in force; empty: there is nothing to set.
    [[nodiscard]] QString name() const;
    [[nodiscard]] bool isActive() const;
    //! Has the page fill \a parent.
    void show(QWidget *parent) const;
    //! False: the page stays, and has told the user why. May run an event loop.
    [[nodiscard]] bool save() const;
    void cancel() const;

private:
    [[nodiscard]] ISettingUIPlugin *page() const;

    QPointer<QObject> m_controller;
};

using SettingModules = QVector<SettingModule>;

//! Those of \a modules that have something to set.
[[nodiscard]] SettingModules namedModules(const SettingModules &modules);
