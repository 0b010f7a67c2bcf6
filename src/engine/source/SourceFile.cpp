#include "engine/source/SourceFile.h"

#include "engine/state/Conversions.h"
#include "platform/SafeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

namespace {
const QByteArray Utf8Bom("\xEF\xBB\xBF");
}  // namespace

DecodedSource DecodeSource(const QByteArray& bytes)
{
    DecodedSource out;
    // The decoder drops a leading byte order mark; the encoding remembers it.
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    out.text = utf8.decode(bytes);
    out.encoding.bom = bytes.startsWith(Utf8Bom);
    if (utf8.hasError() || BreaksInTheTextControl(out.text)) {
        out.encoding.utf8 = out.encoding.bom = false;
        out.text = QString::fromLatin1(bytes);
    }
    out.encoding.lineEnd = UsualLineEnd(out.text, out.encoding.lineEnd);
    return out;
}

bool EncodeSource(const QString& text, const SourceEncoding& encoding, QByteArray& bytes)
{
    if (encoding.utf8) {
        bytes = (encoding.bom ? Utf8Bom : QByteArray()) + text.toUtf8();
        return true;
    }
    for (QChar c : text)
        if (c.unicode() > 0xFF)
            return false;
    bytes = text.toLatin1();
    return true;
}

bool ReadSourceFile(const QString& path, QByteArray& bytes, QString& error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = file.errorString();
        return false;
    }
    bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        error = file.errorString();
        return false;
    }
    return true;
}

bool SaveSourceText(const QString& path, const QString& text, const SourceEncoding& encoding, QString& error)
{
    QByteArray bytes;
    if (!EncodeSource(text, encoding, bytes)) {
        error = QStringLiteral("The text holds characters that this file's one-byte encoding cannot store");
        return false;
    }
    return WriteFileSafely(path, bytes, error);
}

bool SameFile(const QString& a, const QString& b)
{
    const QFileInfo first(a), second(b);
    const QString canonical = first.canonicalFilePath();
    return canonical.isEmpty() ? first.absoluteFilePath() == second.absoluteFilePath()
                               : canonical == second.canonicalFilePath();
}

int SaveFilterIndexOf(const QString& fileName)
{
    QString base, extension;
    SplitFileName(fileName, base, extension);
    extension = extension.toUpper();
    return extension == QLatin1String("ASM") ? 1 : extension == QLatin1String("LST") ? 2
         : extension == QLatin1String("TXT") ? 3 : 4;
}

DiskStamp StampOf(const QString& path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return {};
    return {true, file.size(), file.lastModified()};
}
