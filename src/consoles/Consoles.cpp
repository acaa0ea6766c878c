#include "consoles/Consoles.h"

#include "platform/WidgetText.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

namespace vorn
{

void Consoles::Show(const std::string &model, const std::string &consoleBaud)
{
    QDialog console(&main_);
    console.setObjectName(ToQString("Form" + model));
    console.setWindowTitle(ToQString("VORN-" + model));
    console.setProperty("ConsoleBaud", ToQString(consoleBaud));
    console.setProperty("NodeKey", ToQString(main_.SelectedNodeKey));

    auto *layout = new QVBoxLayout(&console);
    layout->setContentsMargins(Rhythm::Margin, Rhythm::Margin, Rhythm::Margin, Rhythm::Margin);
    layout->addWidget(
        new QLabel(QStringLiteral("The console of this model is not available yet."), &console));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, &console);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &console, &QDialog::reject);
    layout->addWidget(buttons);
    console.exec();
}

} // namespace vorn
