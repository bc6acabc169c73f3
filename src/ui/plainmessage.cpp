#include "ui/plainmessage.h"

void PlainMessage::show(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text)
{
    QMessageBox box(icon, title, {}, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
    box.setWindowModality(Qt::WindowModal); // the tray icon goes on working
    box.exec();
}
