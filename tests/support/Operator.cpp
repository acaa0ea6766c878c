#include "support/Operator.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QEventLoop>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include <atomic>

namespace
{

constexpr std::chrono::milliseconds Look{2};

QPoint RowOf(const QTreeWidget &list, int row)
{
    return list.visualItemRect(list.topLevelItem(row)).center();
}

} // namespace

void PickEntry(QComboBox &box, int entry)
{
    box.showPopup();
    box.view()->setCurrentIndex(box.model()->index(entry, box.modelColumn()));
    QTest::keyClick(box.view(), Qt::Key_Return);
}

int StyleOf(const QMessageBox &box)
{
    switch (box.icon()) {
    case QMessageBox::Critical:
        return 16;
    case QMessageBox::Question:
        return 36;
    case QMessageBox::Warning:
        return 48;
    case QMessageBox::Information:
        return 64;
    default:
        return box.standardButtons().testFlag(QMessageBox::Cancel) ? 1 : 0;
    }
}

void Operator::Run(const std::function<void(Operator &)> &steps)
{
    std::atomic<bool> done = false;
    std::thread thread([&] {
        Operator person;
        steps(person);
        if (!::testing::Test::HasFatalFailure())
            while (person.FailOnStray(Any)) {
            }
        done = true;
        QMetaObject::invokeMethod(
            qApp, [] {}, Qt::QueuedConnection);
    });
    while (!done)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    thread.join();
}

bool Operator::FailOnStray(Stray what)
{
    return Gui([what] {
        QWidget *modal = QApplication::activeModalWidget();
        const auto *box = qobject_cast<QMessageBox *>(modal);
        if (!modal || (what == Box && !box))
            return false;
        ADD_FAILURE() << "A window that nobody expected: " << modal->windowTitle().toStdString() << " / "
                      << (box ? box->text().toStdString() : std::string());
        modal->close();
        return true;
    });
}

bool Operator::WaitFor(const std::function<bool()> &condition, const char *what)
{
    const auto deadline = std::chrono::steady_clock::now() + Patience;
    while (!Gui(condition)) {
        if (FailOnStray(Box))
            return false;
        if (std::chrono::steady_clock::now() > deadline) {
            ADD_FAILURE() << "This never came: " << what;
            return false;
        }
        std::this_thread::sleep_for(Look);
    }
    return true;
}

void Operator::Settle()
{
    for (int i = 0; i < 3; ++i)
        Gui([] {});
}

QPointer<QWidget> Operator::AwaitModal(const char *what, Stray kind)
{
    const auto deadline = std::chrono::steady_clock::now() + Patience;
    for (;;) {
        QPointer<QWidget> modal = Gui([kind] {
            QWidget *active = QApplication::activeModalWidget();
            return QPointer<QWidget>(kind == Any || qobject_cast<QMessageBox *>(active) ? active : nullptr);
        });
        if (modal)
            return modal;
        if (std::chrono::steady_clock::now() > deadline) {
            ADD_FAILURE() << "This window never came: " << what;
            return {};
        }
        std::this_thread::sleep_for(Look);
    }
}

void Operator::AnswerBox(const std::string &text, int style, const std::string &title, const char *button)
{
    const QPointer<QWidget> modal = AwaitModal(text.c_str(), Box);
    if (!modal)
        return;
    Gui([&] {
        auto *box = qobject_cast<QMessageBox *>(modal);
        EXPECT_EQ(box->text().toStdString(), text);
        EXPECT_EQ(box->windowTitle().toStdString(), title);
        EXPECT_EQ(StyleOf(*box), style);
        for (QAbstractButton *candidate : box->buttons()) {
            if (candidate->text().remove(QLatin1Char('&')) == QLatin1String(button)) {
                candidate->click();
                return;
            }
        }
        ADD_FAILURE() << "No button " << button;
        box->reject();
    });
    // The box has gone before the next step looks for one.
    WaitFor([&] { return modal.isNull() || !modal->isVisible(); }, "end of the box");
}

void Operator::AnswerInput(const std::string &prompt, const std::string &title, const std::string &present,
                           const char *answer)
{
    const QPointer<QWidget> modal = AwaitModal(prompt.c_str());
    if (!modal)
        return;
    Gui([&] {
        auto *box = qobject_cast<QInputDialog *>(modal);
        if (!box) {
            ADD_FAILURE() << "Not an input box, expected " << prompt;
            return;
        }
        EXPECT_EQ(box->labelText().toStdString(), prompt);
        EXPECT_EQ(box->windowTitle().toStdString(), title);
        EXPECT_EQ(box->textValue().toStdString(), present);
        if (answer) {
            box->setTextValue(QString::fromLatin1(answer));
            box->accept();
        } else {
            box->reject();
        }
    });
    WaitFor([&] { return modal.isNull() || !modal->isVisible(); }, "end of the input box");
}

void Operator::AnswerFile(const std::string &title, const std::string &offered, const std::string &name,
                          const std::function<void(QFileDialog &)> &look)
{
    const QPointer<QWidget> modal = AwaitModal(title.c_str());
    if (!modal)
        return;
    Gui([&] {
        auto *dialog = qobject_cast<QFileDialog *>(modal);
        if (!dialog) {
            ADD_FAILURE() << "Not a file dialog, expected " << title;
            return;
        }
        EXPECT_EQ(dialog->windowTitle().toStdString(), title);
        auto *entry = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        EXPECT_EQ(entry->text().toStdString(), offered);
        if (look)
            look(*dialog);
        if (name.empty()) {
            dialog->reject();
            return;
        }
        entry->setText(QString::fromStdString(name));
        dialog->setOption(QFileDialog::DontConfirmOverwrite); // that question is the toolkit's
        QTest::keyClick(entry, Qt::Key_Return);
    });
    WaitFor([&] { return modal.isNull() || !modal->isVisible(); }, "end of the file dialog");
}

void Operator::CloseForm(const char *name, const std::function<void(QWidget &)> &look)
{
    const QPointer<QWidget> modal = AwaitModal(name);
    if (!modal)
        return;
    Gui([&] {
        EXPECT_EQ(modal->objectName().toStdString(), name);
        if (look)
            look(*modal);
        modal->close();
    });
    WaitFor([&] { return modal.isNull() || !modal->isVisible(); }, "end of the form");
}

void Operator::Trigger(QAction *action)
{
    Gui([action] {
        EXPECT_TRUE(action->isEnabled()) << action->objectName().toStdString() << " is disabled";
        action->trigger();
    });
    Settle();
}

void Operator::Click(QWidget *widget)
{
    Gui([widget] {
        EXPECT_TRUE(widget->isEnabled()) << widget->objectName().toStdString() << " is disabled";
        EXPECT_TRUE(widget->isVisible()) << widget->objectName().toStdString() << " can't be seen";
        QTest::mouseClick(widget, Qt::LeftButton);
    });
    Settle();
}

void Operator::Type(QWidget *widget, const QString &text)
{
    Gui([&] { QTest::keyClicks(widget, text); });
    Settle();
}

void Operator::Press(QWidget *widget, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    Gui([&] { QTest::keyClick(widget, key, modifiers); });
    Settle();
}

void Operator::Retype(QWidget *entry, const QString &text)
{
    Gui([&] {
        entry->setFocus();
        QTest::keyClick(entry, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(entry, text);
    });
    Settle();
}

void Operator::ClickRow(QTreeWidget *list, int row)
{
    Gui([&] { QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, RowOf(*list, row)); });
    Settle();
}

void Operator::DoubleClickRow(QTreeWidget *list, int row)
{
    Gui([&] { QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, RowOf(*list, row)); });
    Settle();
}

void Operator::LookInto(QMenu *menu)
{
    Gui([&] {
        menu->popup(QPoint());
        menu->hide();
    });
}
