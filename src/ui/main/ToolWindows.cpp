#include "ui/main/ToolWindows.h"

#include "ui/code/frmDisAsm.h"
#include "ui/code/frmLabel.h"
#include "ui/code/frmStack.h"
#include "ui/views/PeripheralRegisterRows.h"
#include "ui/views/frmMemory.h"
#include "ui/views/frmWatch.h"
#include "ui/views/frmRegCPU.h"
#include "ui/devices/frmIOBOard.h"
#include "ui/main/frmMain.h"
#include "ui/devices/frmSerial.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>

namespace toolwindows {

namespace {
// In the order of the View menu.
ToolWindowRow Windows[] = {
    {"frmRegCPU", "mnuViewRegCPU", &CreateRegCPU},
    {"frmRegPorts", "mnuViewRegPorts", &CreateRegisterWindow<PortsWindowKind>},
    {"frmRegTimer", "mnuViewRegTimer", &CreateRegisterWindow<TimerWindowKind>},
    {"frmRegPA", "mnuViewRegPulseAcc", &CreateRegisterWindow<PulseAccWindowKind>},
    {"frmRegSCI", "mnuViewRegSCI", &CreateRegisterWindow<SciWindowKind>},
    {"frmRegSPI", "mnuViewRegSPI", &CreateRegisterWindow<SpiWindowKind>},
    {"frmRegAD", "mnuViewRegAD", &CreateRegisterWindow<AdWindowKind>},
    {"frmRegOther", "mnuViewRegOther", &CreateRegisterWindow<OtherWindowKind>},
    {"frmRegPIA", "mnuViewRegPIA", &CreateRegisterWindow<PiaWindowKind>},
    {"frmIOBOard", "mnuViewIOunit", &CreateIOBOard},
    {"frmMemory", "mnuViewMemory", &CreateMemory},
    {"frmWatch", "mnuViewWatch", &CreateWatch},
    {"frmStack", "mnuViewStack", &CreateStack},
    {"frmDisAsm", "mnuViewDisassembler", &CreateDisAsm},
    {"frmLabel", "mnuViewLabel", &CreateLabel},
    {"frmSerial", "mnuViewSerialTerminal", &CreateSerial},
};
}  // namespace

const ToolWindowRow* Rows(int& count)
{
    count = static_cast<int>(std::size(Windows));
    return Windows;
}

const ToolWindowRow* RowOfWindow(const QString& window)
{
    for (const ToolWindowRow& row : Windows)
        if (window == QLatin1String(row.window))
            return &row;
    return nullptr;
}

const ToolWindowRow* RowOfViewEntry(const QString& entry)
{
    for (const ToolWindowRow& row : Windows)
        if (entry == QLatin1String(row.viewEntry))
            return &row;
    return nullptr;
}

Factory SetFactory(const QString& window, Factory factory)
{
    for (ToolWindowRow& row : Windows)
        if (window == QLatin1String(row.window))
            return std::exchange(row.create, factory);
    qFatal("no tool window %s", qPrintable(window));
}

}  // namespace toolwindows

using namespace toolwindows;

namespace {
const ToolWindowRow& RowOf(const QString& window)
{
    const ToolWindowRow* row = RowOfWindow(window);
    if (!row)
        qFatal("no tool window %s", qPrintable(window));
    return *row;
}
}  // namespace

bool frmMain::IsOpen(const QString& window) const
{
    return Menu(QString::fromLatin1(RowOf(window).viewEntry))->isChecked();
}

QWidget* frmMain::Window(const QString& window) const
{
    // A closed window may wait for its deletion; it is gone already.
    for (QMdiSubWindow* sub : mdiArea()->subWindowList())
        if (sub->widget() && !sub->isHidden() && sub->widget()->objectName() == window)
            return sub->widget();
    return nullptr;
}

QWidget* frmMain::LoadWindow(const QString& window)
{
    if (QWidget* loaded = Window(window))
        return loaded;
    const ToolWindowRow& row = RowOf(window);
    if (!row.create)
        return nullptr;
    QPointer<QAction> entry = Menu(QString::fromLatin1(row.viewEntry));
    entry->setChecked(true);
    QWidget* widget = row.create(*this);
    widget->setObjectName(window);
    QMdiSubWindow* sub = mdiArea()->addSubWindow(widget);
    sub->setAttribute(Qt::WA_DeleteOnClose);
    // Placement needs the frame: a window's Form_Load runs once it has one.
    if (widget->metaObject()->indexOfMethod("Form_Load()") >= 0)
        QMetaObject::invokeMethod(widget, "Form_Load");
    // The check mark is the list of open windows: it goes with the window.
    connect(widget, &QObject::destroyed, this, [entry] {
        if (entry)
            entry->setChecked(false);
    });
    sub->show();
    return widget;
}

void frmMain::UnloadWindow(const QString& window)
{
    // The window's own close handler may refuse (an unsaved text).
    if (QWidget* widget = Window(window); widget && !widget->parentWidget()->close())
        return;
    Menu(QString::fromLatin1(RowOf(window).viewEntry))->setChecked(false);
}

void frmMain::ToggleWindow(const QString& window)
{
    if (IsOpen(window))
        UnloadWindow(window);
    else
        LoadWindow(window);
}

QWidget* frmMain::ActiveWindow() const
{
    QMdiSubWindow* sub = mdiArea()->currentSubWindow();
    return sub ? sub->widget() : nullptr;
}

bool frmMain::CallWindow(QWidget* window, const char* method)
{
    return window && QMetaObject::invokeMethod(window, method);
}
