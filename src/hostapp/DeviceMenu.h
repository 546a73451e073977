#pragma once

#include "Devices.h"

#include <QMenu>

QT_BEGIN_NAMESPACE
class QActionGroup;
QT_END_NAMESPACE

//! The list of devices, of which one is counted: the user's, or automatically the right one.
class DeviceMenu : public QMenu
{
    Q_OBJECT
public:
    explicit DeviceMenu(QWidget *parent = nullptr);
    //! Asked each time before the menu is shown.
    void setReader(std::function<HostDevices()> reader);
    void retranslate();

signals:
    //! The key of the device; empty for the automatic choice.
    void deviceChosen(const QString &key);

private:
    void fill();
    void addChoice(const QString &key, const QString &text, bool checked);

    std::function<HostDevices()> m_reader;
    QActionGroup *m_choices = nullptr;
};
