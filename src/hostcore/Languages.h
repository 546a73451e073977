#pragma once

#include <host/HostCoreExport.h>

#include <QObject>
#include <QStringList>

#include <memory>

//! The language of the user interface: files skylet_CODE.qm whose source texts are text
//! identifiers. English lies below every other language, so a text that a language lacks appears in
//! English. One object per process, on the GUI thread, while there is a QCoreApplication.
class HOST_CORE_EXPORT Languages : public QObject
{
    Q_OBJECT
public:
    //! Loads English from \a directory.
    explicit Languages(const QString &directory, QObject *parent = nullptr);
    ~Languages() override;

    //! Whether the English texts are there; without them the program shows text identifiers.
    [[nodiscard]] bool hasEnglish() const;
    //! The codes of the languages in the folder, "en" first, the others sorted.
    [[nodiscard]] QStringList available() const;
    [[nodiscard]] QString current() const;
    //! The code of the available language that serves \a wanted ("de_AT" gives "de"); empty: none.
    [[nodiscard]] QString match(const QString &wanted) const;
    //! The language that the user's system asks for, else "en".
    [[nodiscard]] QString systemChoice() const;
    //! Switches to \a code. False, and nothing changes, when it is not available or not readable.
    bool use(const QString &code);

signals:
    //! The language has changed: texts are to be fetched again.
    void changed();

private:
    struct Translators;
    const QString m_directory;
    QString m_current;
    std::unique_ptr<Translators> m_translators;
};
