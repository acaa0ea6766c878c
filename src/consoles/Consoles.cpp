#include "consoles/Consoles.h"

#include "platform/WidgetText.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

#include <memory>

namespace vorn
{

void Consoles::Show(const std::string &model, const std::string &consoleBaud)
{
    const auto console = std::make_unique<QDialog>(&main_);
    console->setObjectName(ToQString("Form" + model));
    console->setWindowTitle(ToQString("VORN-" + model));
    console->setProperty("ConsoleBaud", ToQString(consoleBaud));
    console->setProperty("NodeKey", ToQString(main_.SelectedNodeKey));

    auto *layout = new QVBoxLayout(console.get());
    layout->setContentsMargins(Rhythm::Margin, Rhythm::Margin, Rhythm::Margin, Rhythm::Margin);
    layout->addWidget(
        new QLabel(QStringLiteral("The console of this model is not available yet."), console.get()));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, console.get());
    QObject::connect(buttons, &QDialogButtonBox::rejected, console.get(), &QDialog::reject);
    layout->addWidget(buttons);
    console->exec();
}

} // namespace vorn
