#pragma once

#include "SettingModule.h"

#include <QDialog>

QT_BEGIN_NAMESPACE
class QListWidget;
class QStackedWidget;
QT_END_NAMESPACE

class OkCancelBox;
class SettingsPageArea;

//! The plug-ins' settings pages, one at a time: saved together with OK, else thrown away. Used
//! once; pages are fetched when they are chosen.
class SettingsDialog : public QDialog
{
    Q_OBJECT
public:
    //! \a modules have names.
    SettingsDialog(const SettingModules &modules, QWidget *parent);

    //! Fetches the page that is to be seen, also from where its plug-in has put it meanwhile.
    void showPage();
    void retranslate();

public slots:
    void accept() override;
    void reject() override;

private:
    void createControls();
    void choosePage(int index);
    [[nodiscard]] QSize fitted(const QSize &size) const; // to the screen
    [[nodiscard]] SettingsPageArea *area(int index) const;
    [[nodiscard]] bool savePages();

    const SettingModules m_modules;
    QListWidget *m_list = nullptr;
    QStackedWidget *m_areas = nullptr;
    OkCancelBox *m_buttons = nullptr;
    bool m_saving = false;
};
