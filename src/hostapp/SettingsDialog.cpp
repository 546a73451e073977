#include "SettingsDialog.h"

#include "HostTexts.h"
#include "OkCancelBox.h"
#include "SettingsPageArea.h"

#include <QGridLayout>
#include <QListWidget>
#include <QScreen>
#include <QStackedWidget>

SettingsDialog::SettingsDialog(const SettingModules &modules, QWidget *parent)
    : QDialog(parent)
    , m_modules(modules)
{
    setObjectName(QStringLiteral("Host_Settings"));
    createControls();
    retranslate();
    m_list->setCurrentRow(0);
    resize(fitted(sizeHint()));
}

void SettingsDialog::createControls()
{
    m_list = new QListWidget(this);
    m_list->setObjectName(QStringLiteral("Host_SettingsPages"));
    m_list->setSizeAdjustPolicy(QListWidget::AdjustToContents);
    m_list->setVisible(m_modules.size() > 1);
    m_areas = new QStackedWidget(this);
    m_buttons = new OkCancelBox(this);
    for (int i = 0; i < m_modules.size(); ++i) {
        m_list->addItem(QString());
        m_areas->addWidget(new SettingsPageArea);
    }
    auto *layout = new QGridLayout(this);
    layout->addWidget(m_list, 0, 0);
    layout->addWidget(m_areas, 0, 1);
    layout->addWidget(m_buttons, 1, 0, 1, 2);
    layout->setColumnStretch(1, 1);
    connect(m_list, &QListWidget::currentRowChanged, this, &SettingsDialog::choosePage);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &SettingsDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &SettingsDialog::reject);
}

void SettingsDialog::retranslate()
{
    setWindowTitle(hostText("HOST_SETTINGS_TITLE"));
    m_list->setAccessibleName(hostText("HOST_SETTINGS_PAGES"));
    for (int i = 0; i < m_modules.size(); ++i) {
        const QString name = m_modules.at(i).name();
        m_list->item(i)->setText(name);
        area(i)->setAccessibleName(name);
    }
    m_buttons->retranslate();
}

QSize SettingsDialog::fitted(const QSize &size) const
{
    return size.boundedTo(screen()->availableSize());
}

SettingsPageArea *SettingsDialog::area(int index) const
{
    return static_cast<SettingsPageArea *>(m_areas->widget(index));
}

void SettingsDialog::choosePage(int index)
{
    m_areas->setCurrentIndex(index);
    if (!area(index)->page())
        showPage();
}

void SettingsDialog::showPage()
{
    const int index = m_areas->currentIndex();
    area(index)->embed(m_modules.at(index));
    QWidget *page = area(index)->page();
    if (!page)
        return;
    m_areas->updateGeometry(); // so that this page's size counts at once
    resize(fitted(size().expandedTo(sizeHint())));
    m_buttons->followInTabOrder(page);
}

void SettingsDialog::accept()
{
    if (m_saving)
        return;
    const QPointer<SettingsDialog> self(this); // a page's message runs an event loop
    m_saving = true;
    const bool saved = savePages();
    if (!self)
        return;
    m_saving = false;
    if (saved)
        QDialog::accept();
}

// Every page that is here has been shown and neither saved nor cancelled since. One that refuses
// is brought to the front; those saved before it have gone and are not asked again.
bool SettingsDialog::savePages()
{
    const QPointer<SettingsDialog> self(this);
    for (int i = 0; i < m_modules.size(); ++i) {
        if (!area(i)->page())
            continue;
        const bool saved = m_modules.at(i).save();
        if (!self)
            return false;
        if (!saved) {
            m_list->setCurrentRow(i);
            return false;
        }
    }
    return true;
}

// A page that is being saved cannot be thrown away.
void SettingsDialog::reject()
{
    if (m_saving)
        return;
    for (int i = 0; i < m_modules.size(); ++i) {
        if (area(i)->page())
            m_modules.at(i).cancel();
    }
    QDialog::reject();
}
