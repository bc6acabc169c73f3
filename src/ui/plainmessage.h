#pragma once

#include <QMessageBox>

/// A box that answers what the operator asked for. As plain text: it may quote a server or a file name.
namespace PlainMessage {
void show(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text);
} // namespace PlainMessage
