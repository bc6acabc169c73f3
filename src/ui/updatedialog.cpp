#include "ui/updatedialog.h"

#include "net/updatechecker.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

namespace {

constexpr int MinimumWidth = 420;
constexpr int NotesLines = 8;

/// The address if it leads to the web; anything else that a server sends is not opened. Empty otherwise.
QUrl webAddress(const QString& text)
{
    const QUrl url(text, QUrl::StrictMode);
    const bool web = url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http");
    return web && !url.host().isEmpty() ? url : QUrl();
}

QLabel* richLabel(const QString& html)
{
    auto* label = new QLabel(html);
    label->setTextFormat(Qt::RichText);
    label->setWordWrap(true);
    return label;
}

QPlainTextEdit* notesView(const QString& notes)
{
    auto* view = new QPlainTextEdit(notes);
    view->setReadOnly(true);
    view->setTabChangesFocus(true);
    view->setFixedHeight(NotesLines * view->fontMetrics().lineSpacing());
    return view;
}

} // namespace

UpdateDialog::UpdateDialog(const UpdateInfo& info, QWidget* parent) : QDialog(parent)
{
    setWindowTitle(tr("Update Available"));
    setMinimumWidth(MinimumWidth);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(richLabel(info.critical ? tr("<h3 style='color:#c0392b'>Important update available</h3>")
                                              : tr("<h3>Update available</h3>")));
    layout->addWidget(richLabel(
        tr("<p><b>Version %1</b> is available. You are running %2.</p>")
            .arg(info.latestVersion.toHtmlEscaped(), QCoreApplication::applicationVersion().toHtmlEscaped())));
    if (!info.releaseDate.isEmpty())
        layout->addWidget(richLabel(tr("<p style='color:gray'>Released %1</p>").arg(info.releaseDate.toHtmlEscaped())));
    if (!info.notes.isEmpty())
        layout->addWidget(notesView(info.notes));
    if (const QUrl notes = webAddress(info.notesUrl); !notes.isEmpty()) {
        QLabel* link = richLabel(
            tr("<a href=\"%1\">Full release notes</a>").arg(notes.toString(QUrl::FullyEncoded).toHtmlEscaped()));
        link->setTextInteractionFlags(Qt::TextBrowserInteraction);
        connect(link, &QLabel::linkActivated, this, [notes] { QDesktopServices::openUrl(notes); });
        layout->addWidget(link);
    }

    auto* buttons = new QDialogButtonBox;
    QPushButton* download = buttons->addButton(tr("&Download..."), QDialogButtonBox::AcceptRole);
    const QUrl address = webAddress(info.downloadUrl);
    download->setEnabled(!address.isEmpty());
    connect(download, &QPushButton::clicked, this, [this, address] {
        QDesktopServices::openUrl(address);
        accept();
    });
    if (!info.critical) {
        QPushButton* skip = buttons->addButton(tr("&Skip This Version"), QDialogButtonBox::ActionRole);
        connect(skip, &QPushButton::clicked, this, [this] {
            Q_EMIT skipRequested();
            reject();
        });
    }
    buttons->addButton(tr("&Later"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}
