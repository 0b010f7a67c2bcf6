// The help window: one per process, beside the main window, with Contents,
// Back and Forward, showing the topics of the help resources.
#pragma once

#include <QUrl>
#include <QWidget>

class QTextBrowser;

class HelpViewer : public QWidget {
    Q_OBJECT
public:
    // Opens the window (or brings it forward) at a topic.
    static void Show(const QUrl& topic);
    static void CloseAll();
    // The open window, or nullptr.
    static HelpViewer* Instance();

    QUrl Topic() const;
    QString TopicText() const;

private:
    HelpViewer();
    QTextBrowser* browser_;
};
