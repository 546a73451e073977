#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QProcessEnvironment>
#include <QStringList>

/*! What a call of velqctl gave. */
struct Answer
{
    int code = -1; //!< -1: it did not end by itself
    QByteArray output;
    QByteArray message; //!< of the standard error
    //! The output, or an empty object when it is no JSON.
    [[nodiscard]] QJsonObject json() const;
};

//! Runs velqctl with \a arguments, its store in \a directory (none: empty).
[[nodiscard]] Answer velqctl(const QString &directory, const QStringList &arguments,
                             const QProcessEnvironment &environment
                             = QProcessEnvironment::systemEnvironment());
//! Runs \a script with the program as $0 and the store's directory as $1.
[[nodiscard]] Answer shell(const QString &directory, const QString &script);
