#include "Languages.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

static const QLatin1String kEnglish("en");
static const QLatin1String kPrefix("skylet_");
static const QLatin1String kSuffix(".qm");

// A translator leaves the application by itself when it is destroyed.
struct Languages::Translators
{
    QTranslator english;
    std::unique_ptr<QTranslator> own;
    std::unique_ptr<QTranslator> qt; // Qt's own texts: the buttons of its dialogs
    bool hasEnglish = false;
};

static QString qtTranslationsPath()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return QLibraryInfo::path(QLibraryInfo::TranslationsPath);
#else
    return QLibraryInfo::location(QLibraryInfo::TranslationsPath);
#endif
}

static std::unique_ptr<QTranslator> qtTranslator(const QString &code)
{
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(QLocale(code), QStringLiteral("qtbase"), QStringLiteral("_"),
                          qtTranslationsPath()))
        translator.reset(); // not installed: Qt speaks English
    return translator;
}

Languages::Languages(const QString &directory, QObject *parent)
    : QObject(parent)
    , m_directory(directory)
    , m_current(kEnglish)
    , m_translators(std::make_unique<Translators>())
{
    m_translators->hasEnglish = m_translators->english.load(kPrefix + kEnglish, m_directory);
    if (m_translators->hasEnglish)
        QCoreApplication::installTranslator(&m_translators->english);
}

Languages::~Languages() = default;

bool Languages::hasEnglish() const
{
    return m_translators->hasEnglish;
}

QStringList Languages::available() const
{
    const QStringList files
        = QDir(m_directory)
              .entryList({ kPrefix + QLatin1Char('*') + kSuffix }, QDir::Files, QDir::Name);
    QStringList codes { kEnglish };
    for (const QString &file : files) {
        const QString code
            = file.mid(kPrefix.size(), file.size() - kPrefix.size() - kSuffix.size());
        if (code != kEnglish)
            codes.append(code);
    }
    return codes;
}

QString Languages::current() const
{
    return m_current;
}

QString Languages::match(const QString &wanted) const
{
    const QStringList codes = available();
    QString code = wanted;
    code.replace(QLatin1Char('-'), QLatin1Char('_'));
    while (!code.isEmpty()) {
        if (codes.contains(code))
            return code;
        code.truncate(qMax(0, int(code.lastIndexOf(QLatin1Char('_')))));
    }
    return QString();
}

QString Languages::systemChoice() const
{
    const QStringList wanted = QLocale::system().uiLanguages();
    for (const QString &language : wanted) {
        const QString code = match(language);
        if (!code.isEmpty())
            return code;
    }
    return kEnglish;
}

bool Languages::use(const QString &code)
{
    if (code == m_current)
        return true;
    std::unique_ptr<QTranslator> own;
    if (code != kEnglish) {
        own = std::make_unique<QTranslator>();
        // By its full name: QTranslator would otherwise try shorter names of its own accord.
        if (!available().contains(code) || !own->load(kPrefix + code + kSuffix, m_directory))
            return false;
    }
    m_translators->qt = qtTranslator(code);
    m_translators->own = std::move(own);
    if (m_translators->qt)
        QCoreApplication::installTranslator(m_translators->qt.get());
    if (m_translators->own)
        QCoreApplication::installTranslator(m_translators->own.get());
    m_current = code;
    emit changed();
    return true;
}
