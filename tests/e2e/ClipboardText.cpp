// Prints the text that was copied last, or with an argument the text that was marked last.

#include <QClipboard>
#include <QGuiApplication>

#include <iostream>

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    std::cout << QGuiApplication::clipboard()
                     ->text(argc > 1 ? QClipboard::Selection : QClipboard::Clipboard)
                     .toStdString();
}
