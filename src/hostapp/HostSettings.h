#pragma once

#include "HostView.h"

#include <QByteArray>
#include <QSettings>
#include <QString>

#include <memory>
#include <optional>

//! What the program remembers: skylet.ini in the user data folder. Without a folder it remembers
//! nothing. A value that cannot be read counts as not there.
class HostSettings
{
public:
    //! \a folder ends in a separator, or is empty.
    explicit HostSettings(const QString &folder);

    [[nodiscard]] std::optional<HostView> view() const;
    void setView(HostView view);
    [[nodiscard]] QByteArray geometry() const;
    void setGeometry(const QByteArray &geometry);
    //! The language chosen by hand; empty: the system's.
    [[nodiscard]] QString language() const;
    void setLanguage(const QString &code);

private:
    void set(const QString &key, const QVariant &value);
    [[nodiscard]] QVariant get(const QString &key) const;

    std::unique_ptr<QSettings> m_settings;
};
