#include "DeviceMenu.h"

#include "HostTexts.h"

#include <QAction>
#include <QActionGroup>

// "&" would be a mnemonic.
static QString plain(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

DeviceMenu::DeviceMenu(QWidget *parent)
    : QMenu(parent)
{
    setObjectName(QStringLiteral("Host_Devices"));
    connect(this, &QMenu::aboutToShow, this, &DeviceMenu::fill);
}

void DeviceMenu::setReader(std::function<HostDevices()> reader)
{
    m_reader = std::move(reader);
}

void DeviceMenu::retranslate()
{
    setTitle(hostText("HOST_MENU_DEVICE"));
}

void DeviceMenu::fill()
{
    clear();
    delete m_choices;
    m_choices = new QActionGroup(this);
    const HostDevices devices = m_reader ? m_reader() : HostDevices();
    addChoice(QString(), hostText("HOST_DEVICE_AUTOMATIC"), devices.used.isEmpty());
    addSeparator();
    const QString usedOne = usedKey(devices);
    bool found = usedOne.isEmpty();
    for (const HostDevice &device : devices.list) {
        // What was used before and is not there now may be there again tomorrow.
        const QString text
            = device.present ? device.text : hostText("HOST_DEVICE_ABSENT").arg(device.text);
        const bool used = device.key == usedOne;
        found = found || used;
        addChoice(device.key, plain(text), used);
    }
    if (!found) // a device of which nothing but the name is known
        addChoice(usedOne, plain(hostText("HOST_DEVICE_ABSENT").arg(usedOne)), true);
}

void DeviceMenu::addChoice(const QString &key, const QString &text, bool checked)
{
    QAction *action = addAction(text);
    action->setData(key);
    action->setCheckable(true);
    action->setChecked(checked);
    m_choices->addAction(action);
    connect(action, &QAction::triggered, this, [this, key] { emit deviceChosen(key); });
}
