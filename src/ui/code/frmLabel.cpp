#include "ui/code/frmLabel.h"

#include "engine/code/LabelList.h"
#include "engine/state/AppSettings.h"
#include "ui/main/frmMain.h"
#include "ui/views/LabelValueList.h"

#include <QAction>
#include <QMenu>
#include <QMouseEvent>
#include <QTreeWidget>

namespace {
frmLabel* TheInstance = nullptr;
const QString SortKey = QStringLiteral("LabelSort");
}  // namespace

frmLabel* frmLabel::Instance()
{
    return TheInstance;
}

frmLabel* frmLabel::Open()
{
    return qobject_cast<frmLabel*>(ToolWindow::Open(QStringLiteral("frmLabel")));
}

QWidget* CreateLabel(frmMain& main)
{
    auto* form = new frmLabel(main);
    TheInstance = form;
    return form;
}

frmLabel::frmLabel(frmMain& main) : ToolWindow(main, QStringLiteral("Labels"), QStringLiteral("Label"))
{
    setObjectName(QStringLiteral("frmLabel"));
    ListView = AddLabelValueList(*this);

    // The sort popup belongs to frmMain; its entries act on this window while it lives.
    connect(MainForm->Menu("mnuPopupSortName"), &QAction::triggered, this, &frmLabel::mnuPopupSortName_Click);
    connect(MainForm->Menu("mnuPopupSortValue"), &QAction::triggered, this, &frmLabel::mnuPopupSortValue_Click);
    connect(MainForm->Menu("mnuPopupSortNone"), &QAction::triggered, this, &frmLabel::mnuPopupSortNone_Click);
}

frmLabel::~frmLabel()
{
    if (TheInstance == this)
        TheInstance = nullptr;
}

void frmLabel::Load()
{
    LabelSortMode = GetTextSetting(SortKey, QString());
    Redraw();
}

void frmLabel::Form_Unload()
{
    SaveTextSetting(SortKey, LabelSortMode);
    if (TheInstance == this)
        TheInstance = nullptr;
}

void frmLabel::Redraw()
{
    ListView->setSortingEnabled(false);
    ListView->clear();
    ListView->setColumnWidth(1, fontMetrics().horizontalAdvance(QString(5, QLatin1Char(' '))));
    QList<QTreeWidgetItem*> items;
    for (const LabelRow& row : LabelRows(LabelSortMode))
        items << new QTreeWidgetItem(QStringList{row.Name, row.Value});
    ListView->addTopLevelItems(items);
}

void frmLabel::SetSortMode(const QString& mode)
{
    LabelSortMode = mode;
    Redraw();
}

void frmLabel::mnuPopupSortName_Click() { SetSortMode(QStringLiteral("N")); }
void frmLabel::mnuPopupSortValue_Click() { SetSortMode(QStringLiteral("V")); }
void frmLabel::mnuPopupSortNone_Click() { SetSortMode(QString()); }

void frmLabel::ListView_RightButton(const QPoint& globalPos)
{
    const bool byName = LabelSortMode == QLatin1String("N");
    const bool byValue = LabelSortMode == QLatin1String("V");
    MainForm->Menu("mnuPopupSortName")->setChecked(byName);
    MainForm->Menu("mnuPopupSortValue")->setChecked(byValue);
    MainForm->Menu("mnuPopupSortNone")->setChecked(!byName && !byValue);
    main_.MenuOf(QStringLiteral("mnuPopupSort"))->popup(globalPos);
}

bool frmLabel::eventFilter(QObject* watched, QEvent* event)
{
    if (const QMouseEvent* press = RightButtonPress(event); press && watched == ListView->viewport()) {
        ListView_RightButton(press->globalPosition().toPoint());
        return true;
    }
    return ToolWindow::eventFilter(watched, event);
}
