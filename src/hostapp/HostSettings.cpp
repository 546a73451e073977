#include "HostSettings.h"

static QString viewName(HostView view)
{
    return view == HostView::Usage ? QStringLiteral("usage") : QStringLiteral("statistics");
}

HostSettings::HostSettings(const QString &folder)
{
    if (!folder.isEmpty())
        m_settings = std::make_unique<QSettings>(folder + QLatin1String("skylet.ini"),
                                                 QSettings::IniFormat);
}

std::optional<HostView> HostSettings::view() const
{
    const QString name = get(QStringLiteral("view")).toString();
    for (const HostView view : { HostView::Usage, HostView::Statistics }) {
        if (name == viewName(view))
            return view;
    }
    return std::nullopt;
}

void HostSettings::setView(HostView view)
{
    set(QStringLiteral("view"), viewName(view));
}

QByteArray HostSettings::geometry() const
{
    return get(QStringLiteral("geometry")).toByteArray();
}

void HostSettings::setGeometry(const QByteArray &geometry)
{
    set(QStringLiteral("geometry"), geometry);
}

QString HostSettings::language() const
{
    return get(QStringLiteral("language")).toString();
}

void HostSettings::setLanguage(const QString &code)
{
    set(QStringLiteral("language"), code);
}

void HostSettings::set(const QString &key, const QVariant &value)
{
    if (m_settings)
        m_settings->setValue(key, value);
}

QVariant HostSettings::get(const QString &key) const
{
    return m_settings ? m_settings->value(key) : QVariant();
}
