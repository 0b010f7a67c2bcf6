#include "ui/views/ToolWindow.h"

#include "platform/widgets/PopupMenu.h"
#include "platform/widgets/WindowPlacement.h"
#include "ui/main/ToolWindows.h"
#include "ui/main/frmMain.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QScreen>

namespace {
const char* const RowProperty = "row";
}  // namespace

const QColor ToolWindow::CurrentColour{0, 0, 255};

QColor ToolWindow::PlainColour()
{
    return QApplication::palette().color(QPalette::Base);
}

ToolWindow::ToolWindow(frmMain& main, const QString& caption, const QString& placementPrefix)
    : main_(main), link_(main.Link()), prefix_(placementPrefix)
{
    setWindowTitle(caption);
    connect(main.mdiArea(), &QMdiArea::subWindowActivated, this, &ToolWindow::SubWindowActivated);
}

QWidget* ToolWindow::Open(const QString& window)
{
    Q_ASSERT(MainForm);
    QWidget* open = MainForm->Window(window);
    if (!open)
        return MainForm->LoadWindow(window);
    MainForm->mdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(open->parentWidget()));
    return open;
}

void ToolWindow::Form_Load()
{
    if (!prefix_.isEmpty()) {
        WindowPlacement defaults = main_.PlacementDefault(prefix_);
        const QSize content = ContentSize();
        if (const auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget()); frame && content.isValid()) {
            // The frame's title bar and borders stand around the content.
            const QMargins around = frame->contentsMargins();
            defaults.Width = PixelsToTwipsX(content.width() + around.left() + around.right());
            defaults.Height = PixelsToTwipsY(content.height() + around.top() + around.bottom());
        }
        LoadPlacement(this, prefix_, defaults);
    }
    Load();
}

void ToolWindow::closeEvent(QCloseEvent* event)
{
    if (!unloaded_) {
        if (active_) {
            active_ = false;
            Form_Deactivate();
        }
        Form_Unload();
        unloaded_ = true;
        if (!prefix_.isEmpty())
            SavePlacement(this, prefix_);
        if (const auto* row = toolwindows::RowOfWindow(objectName()))
            main_.Menu(QString::fromLatin1(row->viewEntry))->setChecked(false);
    }
    event->accept();
}

void ToolWindow::SubWindowActivated(QMdiSubWindow* sub)
{
    // The main window may be on its way out and take this one with it.
    if (unloaded_ || !MainForm)
        return;
    auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget());
    if (sub && sub == frame) {
        if (!active_) {
            active_ = true;
            Form_Activate();
        }
    } else if (active_ && (sub || main_.mdiArea()->currentSubWindow() != frame)) {
        // A null window with this one still current is the application losing
        // the focus, which leaves the active child as it is.
        active_ = false;
        Form_Deactivate();
    }
}

bool ToolWindow::IsActiveForm() const
{
    return MainForm && main_.ActiveWindow() == this;
}

void ToolWindow::ShowPopup(const char* menu, QWidget* focus, const QPoint& globalPos)
{
    if (auto* sub = qobject_cast<QMdiSubWindow*>(parentWidget()))
        main_.mdiArea()->setActiveSubWindow(sub);
    focus->setFocus();
    PopupMenu(main_.MenuOf(QString::fromLatin1(menu)), globalPos);
}

// ---- Rows of label windows ---------------------------------------------------

QLabel* ToolWindow::AddRow(int index, int height)
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    auto* row = new QLabel(this);
    row->setObjectName(QStringLiteral("Label%1").arg(index));
    row->setProperty(RowProperty, index);
    row->setAutoFillBackground(true);
    row->setTextFormat(Qt::PlainText);
    row->setGeometry(0, (index - 1) * height, screen ? screen->virtualSize().width() : 1024, height);
    row->installEventFilter(this);
    SetLook(row, Qt::black, PlainColour());
    return row;
}

void ToolWindow::SetLook(QLabel* row, const QColor& text, const QColor& background)
{
    const QPalette& now = row->palette();
    if (now.color(QPalette::Window) == background && now.color(QPalette::WindowText) == text)
        return;
    QPalette look = now;
    look.setColor(QPalette::Window, background);
    look.setColor(QPalette::WindowText, text);
    row->setPalette(look);
}

void ToolWindow::SetBold(QLabel* row, bool bold)
{
    if (row->font().bold() == bold)
        return;
    QFont font = row->font();
    font.setBold(bold);
    row->setFont(font);
}

bool ToolWindow::eventFilter(QObject* watched, QEvent* event)
{
    const QVariant row = watched->property(RowProperty);
    if (!row.isValid())
        return QWidget::eventFilter(watched, event);
    const bool press = event->type() == QEvent::MouseButtonPress;
    if (!press && event->type() != QEvent::MouseButtonDblClick)
        return QWidget::eventFilter(watched, event);
    const auto* mouse = static_cast<QMouseEvent*>(event);
    if (press) {
        if (mouse->button() == Qt::LeftButton)
            Label_Click(row.toInt());
        else if (mouse->button() == Qt::RightButton)
            Label_RightButton(row.toInt(), mouse->globalPosition().toPoint());
        return true;
    }
    if (mouse->button() == Qt::LeftButton)
        Label_DblClick(row.toInt());
    return true;
}
