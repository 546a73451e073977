#include "PluginBuild.h"

#include <QFile>

namespace PluginBuild {

namespace {

// Qt marks its plug-ins with a magic text, then one byte each: the format's version, Qt's major
// version.
struct Mark
{
    QByteArray magic;
    char format;
};

int majorAfter(const QByteArray &image, const Mark &mark)
{
    // The text alone may also stand among the strings of any program, hence the checks.
    for (auto at = image.indexOf(mark.magic); at >= 0; at = image.indexOf(mark.magic, at + 1)) {
        const auto end = at + mark.magic.size();
        if (image.size() < end + 2)
            return 0;
        const int major = image.at(end + 1);
        if (image.at(end) == mark.format && major >= 5 && major <= 9)
            return major;
    }
    return 0;
}

} // namespace

int qtMajorOf(const QByteArray &image)
{
    static const Mark kNote { QByteArray("qt-project!", 12), 1 }; // with its NUL; since 6.3
    static const Mark kSection { QByteArray("QTMETADATA !"), 0 }; // before
    const int major = majorAfter(image, kNote);
    return major ? major : majorAfter(image, kSection);
}

int qtMajorOfFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() == 0)
        return 0;
    const qint64 size = qMin<qint64>(file.size(), 1 << 30); // a QByteArray's in Qt 5
    const uchar *data = file.map(0, size);
    if (!data)
        return 0;
    return qtMajorOf(QByteArray::fromRawData(reinterpret_cast<const char *>(data), int(size)));
}

} // namespace PluginBuild
