#include "platform/widgets/HelpViewer.h"

#include <QPointer>
#include <QTextBrowser>
#include <QToolBar>
#include <QVBoxLayout>

// The topics are compiled into the library; outside any namespace, as the macro needs.
static void LoadHelpResources()
{
    Q_INIT_RESOURCE(help);
}

namespace {
QPointer<HelpViewer>& TheViewer()
{
    static QPointer<HelpViewer> viewer;
    return viewer;
}
}  // namespace

HelpViewer::HelpViewer() : browser_(new QTextBrowser(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Orvane Help"));
    resize(640, 560);
    auto* bar = new QToolBar(this);
    bar->addAction(QStringLiteral("&Contents"), this, [this] { browser_->setSource(QUrl(QStringLiteral("qrc:/help/index.html"))); });
    QAction* back = bar->addAction(QStringLiteral("&Back"), browser_, &QTextBrowser::backward);
    QAction* forward = bar->addAction(QStringLiteral("&Forward"), browser_, &QTextBrowser::forward);
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(browser_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(browser_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    connect(browser_, &QTextBrowser::sourceChanged, this, [this] {
        setWindowTitle(QStringLiteral("Orvane Help - ") + browser_->documentTitle());
    });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(bar);
    layout->addWidget(browser_);
}

HelpViewer* HelpViewer::Instance()
{
    return TheViewer();
}

void HelpViewer::Show(const QUrl& topic)
{
    LoadHelpResources();
    if (!TheViewer())
        TheViewer() = new HelpViewer;
    HelpViewer* viewer = TheViewer();
    viewer->browser_->setSource(topic);
    viewer->show();
    viewer->raise();
    viewer->activateWindow();
}

void HelpViewer::CloseAll()
{
    if (TheViewer())
        TheViewer()->close();
}

QUrl HelpViewer::Topic() const
{
    return browser_->source();
}

QString HelpViewer::TopicText() const
{
    return browser_->toPlainText();
}
