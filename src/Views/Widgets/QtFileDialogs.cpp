#include "Views/Widgets/QtFileDialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QStandardPaths>
#include <QWindow>

namespace wrapio {

using namespace Qt::StringLiterals;

namespace {

QString startFolder() {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir(documents).exists() ? documents : QDir::homePath();
}

QStringList patterns(const QStringList& extensions) {
    QStringList list;
    for (const QString& extension : extensions)
        list << u"*."_s + extension;
    return list;
}

/// Shows `dialog`, which deletes itself, and passes on what was chosen in it.
void ask(QFileDialog* dialog, FileDialogs::Answer answer) {
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::ApplicationModal);
    QObject::connect(dialog, &QFileDialog::finished, dialog, [dialog, answer = std::move(answer)](int result) {
        const QStringList files = result == QFileDialog::Accepted ? dialog->selectedFiles() : QStringList();
        answer(files.isEmpty() ? std::nullopt : std::optional(QDir::cleanPath(files.first())));
    });
    QWindow* const asker = QGuiApplication::focusWindow();
    dialog->winId();
    if (dialog->windowHandle())
        dialog->windowHandle()->setTransientParent(asker);
    dialog->open();
}

}  // namespace

void QtFileDialogs::openFile(const OpenFileRequest& request, Answer answer) {
    auto* const dialog = new QFileDialog(nullptr, request.title, startFolder());
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    dialog->setFileMode(QFileDialog::ExistingFile);
    if (!request.contentTypes.isEmpty())
        dialog->setMimeTypeFilters(request.contentTypes);
    else if (!request.extensions.isEmpty())
        dialog->setNameFilter(patterns(request.extensions).join(u' '));
    ask(dialog, std::move(answer));
}

void QtFileDialogs::saveFile(const SaveFileRequest& request, Answer answer) {
    auto* const dialog = new QFileDialog(nullptr, request.title, startFolder());
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    if (!request.extension.isEmpty()) {
        dialog->setNameFilter(patterns({request.extension}).first());
        dialog->setDefaultSuffix(request.extension);
    }
    dialog->selectFile(request.proposedName);
    ask(dialog, std::move(answer));
}

}  // namespace wrapio
