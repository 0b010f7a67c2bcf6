#include "ui/source/AssembleInputGate.h"

#include "engine/source/AssembleRun.h"

#include <QApplication>
#include <QKeyEvent>

AssembleInputGate::AssembleInputGate(AssembleRun& run) : run_(run)
{
    qApp->installEventFilter(this);
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

AssembleInputGate::~AssembleInputGate()
{
    QApplication::restoreOverrideCursor();
    qApp->removeEventFilter(this);
}

bool AssembleInputGate::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
            run_.Cancel();
        return true;
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
        return true;
    case QEvent::Close:
        return event->spontaneous();
    default:
        return false;
    }
}
