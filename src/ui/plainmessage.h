#pragma once

#include <QMessageBox>

/// A message box that answers the operator. Its text is shown as plain text: it may quote a server or a file name.
namespace PlainMessage {
void show(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text);
} // namespace PlainMessage
