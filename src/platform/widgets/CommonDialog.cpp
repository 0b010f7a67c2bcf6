#include "platform/widgets/CommonDialog.h"

#include "platform/widgets/Help.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDialog>
#include <QRegularExpression>

namespace {
CommonDialog::Handler& TheHandler()
{
    static CommonDialog::Handler handler;
    return handler;
}
}  // namespace

CommonDialog::Handler CommonDialog::SetHandler(Handler handler)
{
    return std::exchange(TheHandler(), std::move(handler));
}

QString QtFileFilter(const QString& filter)
{
    const QStringList parts = filter.split('|');
    QStringList filters;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        QString description = parts[i].trimmed();
        // A description that already shows its patterns in brackets keeps its words only.
        description.remove(QRegularExpression(QStringLiteral("\\s*\\([^()]*\\)$")));
        QString patterns = parts[i + 1].trimmed();
        patterns.replace(';', ' ');
        filters << description + " (" + patterns + ")";
    }
    return filters.join(QStringLiteral(";;"));
}

bool CommonDialog::ShowFile(Kind kind)
{
    QString chosen;
    if (TheHandler()) {
        CommonDialog answer = *this;
        const bool accepted = TheHandler()(answer, kind);
        // The file type chosen stays chosen, even through a Cancel.
        FilterIndex = answer.FilterIndex;
        if (!accepted)
            return false;
        chosen = answer.FileName;
    } else {
        const QStringList filters = QtFileFilter(Filter).split(QStringLiteral(";;"));
        QString selected = FilterIndex >= 1 && FilterIndex <= filters.size() ? filters[FilterIndex - 1] : QString();
        QString start = InitDir.isEmpty() ? FileName : QDir(InitDir).filePath(FileName);
        chosen = kind == Kind::Open
                     ? QFileDialog::getOpenFileName(Owner, DialogTitle, start, QtFileFilter(Filter), &selected)
                     : QFileDialog::getSaveFileName(Owner, DialogTitle, start, QtFileFilter(Filter), &selected);
        if (chosen.isEmpty())
            return false;
        FilterIndex = static_cast<int>(filters.indexOf(selected)) + 1;
    }
    if (chosen.isEmpty())
        return false;
    const QFileInfo info(chosen);
    FileName = info.absoluteFilePath();
    FileTitle = info.fileName();
    QDir::setCurrent(info.absolutePath());
    return true;
}

bool CommonDialog::ShowOpen()
{
    return ShowFile(Kind::Open);
}

bool CommonDialog::ShowSave()
{
    return ShowFile(Kind::Save);
}

bool CommonDialog::ShowFont()
{
    if (TheHandler()) {
        CommonDialog answer = *this;
        if (!TheHandler()(answer, Kind::Font))
            return false;
        FontName = answer.FontName;
        FontSize = answer.FontSize;
        FontBold = answer.FontBold;
        FontItalic = answer.FontItalic;
        return true;
    }
    QFont initial(FontName);
    if (FontSize > 0)
        initial.setPointSizeF(FontSize);
    initial.setBold(FontBold);
    initial.setItalic(FontItalic);
    bool ok = false;
    const QFont font = QFontDialog::getFont(&ok, initial, Owner, DialogTitle,
        FixedPitchOnly ? QFontDialog::MonospacedFonts : QFontDialog::FontDialogOptions());
    if (!ok)
        return false;
    FontName = font.family();
    FontSize = font.pointSizeF();
    FontBold = font.bold();
    FontItalic = font.italic();
    return true;
}

void CommonDialog::ShowHelp()
{
    ::ShowHelp(HelpFile, HelpCommand, HelpContext);
}
