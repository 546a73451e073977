#pragma once

#include <QScrollArea>

class SettingModule;

//! The rectangle of a settings page in the dialog. The page grows with it and scrolls where it is
//! smaller than the page needs.
class SettingsPageArea : public QScrollArea
{
    Q_OBJECT
public:
    explicit SettingsPageArea(QWidget *parent = nullptr);
    //! Fetches the page of \a module.
    void embed(const SettingModule &module);
    //! The page while it is here, else null.
    [[nodiscard]] QWidget *page() const;
    [[nodiscard]] QSize sizeHint() const override;
};
