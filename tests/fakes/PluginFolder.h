#pragma once
// A plug-in folder of a test's own, which the fake host names as the library path.

#include <QByteArray>
#include <QColor>
#include <QList>
#include <QString>
#include <QTemporaryDir>

class PluginFolder
{
public:
    //! Has a trend graph profile of five colours and four fonts, and nothing else.
    PluginFolder();

    //! The folder's path with a separator at its end.
    [[nodiscard]] QString path() const;
    [[nodiscard]] QString configPath() const;
    [[nodiscard]] QString profilePath() const;
    //! Puts the shipped configuration, profile, settings template and icons there.
    void useShippedFiles();
    //! Writes \a xml as the configuration.
    void writeConfig(const QByteArray &xml);
    //! Writes \a xml as the trend graph profile.
    void writeProfile(const QByteArray &xml);
    //! Writes a configuration of the switches \a on as "true", \a off as "false" and two units, "B"
    //! for amounts and "Bps" for speeds.
    void writeSwitches(const QStringList &on, const QStringList &off = QStringList());
    //! Writes icon \a name: its left half in \a left, its right half in \a right, 16 x 16.
    void writeIcon(const QString &name, const QColor &left, const QColor &right);

    //! Every switch there is.
    [[nodiscard]] static QStringList allSwitches();
    //! A profile of \a colours, each "#" and eight digits, and four fonts: the last has \a size.
    [[nodiscard]] static QByteArray profile(const QList<QByteArray> &colours,
                                            const QByteArray &size = "10");
    //! A whole configuration with one module \a content.
    [[nodiscard]] static QByteArray document(const QByteArray &content);

private:
    QTemporaryDir m_root;
};
