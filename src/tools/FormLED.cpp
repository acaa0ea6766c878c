#include "tools/FormLED.h"

#include "platform/TopmostWindow.h"
#include "platform/WidgetText.h"
#include "protocol/ModelTable.h"
#include "shell/Controls.h"
#include "shell/FieldGuard.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"
#include "tools/SevenSegment.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace vorn
{

FormLED::FormLED(FormMain &main, const NodeKey &node)
    : QDialog(&main), main_(main), node_(node), model_(node.model())
{
    setObjectName(QStringLiteral("FormLED"));
    setWindowTitle(QStringLiteral("LED Display"));
    auto *digits = new QHBoxLayout;
    digits->setSpacing(0);
    digits->addStretch();
    for (std::size_t i = 0; i < Image.size(); ++i) {
        Image[i] = Named(new SevenSegment(this), QStringLiteral("Image%1").arg(i + 1));
        digits->addWidget(Image[i]);
    }
    digits->addStretch();
    Text1 = MakeEntry(this, QStringLiteral("Text1"), QStringLiteral("Value to show"));
    GuardField(Text1,
               Has(model_, Feature::SignedDisplay) ? FieldRule::SignedDisplay : FieldRule::UnsignedDisplay);
    Text1->installEventFilter(this);
    ComSend = MakeButton(this, QStringLiteral("ComSend"), "&Send Data");
    cmdExit = MakeButton(this, QStringLiteral("cmdExit"), "&Exit");
    ComSend->setDefault(true);
    OnWindowClick(main_.Gate, ComSend, this, [this] { ComSend_Click(); });
    connect(cmdExit, &QPushButton::clicked, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(Rhythm::Margin, Rhythm::Margin, Rhythm::Margin, Rhythm::Margin);
    layout->setSpacing(Rhythm::Margin);
    layout->addLayout(digits);
    layout->addLayout(SideBySide({MakeLabel(this, QStringLiteral("Label1"), "&Value :", Text1), Text1}));
    auto *buttons = SideBySide({ComSend, cmdExit});
    buttons->insertStretch(0);
    layout->addLayout(buttons);
    SetTopmost(*this, true);
}

/// A display that can be given back to its module is given back when the window has closed, whatever it was
/// in the middle of.
void FormLED::Run()
{
    Send(main_, node_, Write(Register::DisplaySource, node_, "2"));
    exec();
    if (Has(model_, Feature::SignedDisplay))
        Send(main_, node_, Write(Register::DisplaySource, node_, "1"));
}

bool FormLED::eventFilter(QObject *, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    ComSend->click();
    return true;
}

void FormLED::ComSend_Click()
{
    const std::string value = LedValue(model_, FromQString(Text1->text()));
    if (!Send(main_, node_, Write(Register::DisplayValue, node_, value)))
        return;
    const auto pictures = LedPictures(model_, value);
    for (std::size_t i = 0; i < Image.size(); ++i)
        Image[i]->SetPicture(pictures[i]);
}

} // namespace vorn
