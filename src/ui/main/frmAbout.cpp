#include "ui/main/frmAbout.h"

#include "platform/Version.h"
#include "ui/main/ToolbarIcons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

frmAbout::frmAbout(QWidget* parent)
    : QDialog(parent),
      lblTitle(new QLabel(QStringLiteral("Orvane Integrated Development Tools"), this)),
      lblVersion(new QLabel(QStringLiteral("Version ") + QLatin1String(VersionText()), this)),
      cmdOK(new QPushButton(QStringLiteral("OK"), this))
{
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("About HC11 Orvane"));
    auto* picture = new QLabel(this);
    picture->setPixmap(ProgramIcon().pixmap(32, 32));
    QFont titleFont = lblTitle->font();
    titleFont.setBold(true);
    lblTitle->setFont(titleFont);
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);

    auto* texts = new QVBoxLayout;
    texts->addWidget(lblTitle);
    texts->addWidget(lblVersion);
    auto* top = new QHBoxLayout;
    top->addWidget(picture, 0, Qt::AlignTop);
    top->addSpacing(12);
    top->addLayout(texts);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addSpacing(12);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}
