#include "pages/FrameSlotIO.h"

#include "shell/Controls.h"
#include "shell/DIO.h"
#include "shell/SelectAllOnFocus.h"

#include <QLineEdit>
#include <QPushButton>

namespace vorn
{

FrameSlotIO::FrameSlotIO() : QGroupBox(QStringLiteral("Channels"))
{
    setObjectName(QStringLiteral("FrameSlotIO"));
    auto *channels = new QGridLayout;
    channels->setHorizontalSpacing(Rhythm::LabelToField);
    channels->setVerticalSpacing(Rhythm::BetweenRows);
    for (int i = 0; i < Channels; ++i) {
        const auto e = static_cast<std::size_t>(i);
        TextCH[e] = Named(new QLineEdit(this), ElementName("TextCH", i), QStringLiteral("Channel %1").arg(i));
        TextCH[e]->setAlignment(Qt::AlignRight);
        SelectAllOnFocus(TextCH[e]);
        Labch[e] = MakeLabel(this, ElementName("Labch", i), "CH &" + std::to_string(i) + " :", TextCH[e]);
        LabCHunit[e] = MakeLabel(this, ElementName("LabCHunit", i), "");
        ChHA[e] = Named(new DIO(this), ElementName("ChHA", i));
        ChHA[e]->SetCaption(QStringLiteral("High"));
        ChLA[e] = Named(new DIO(this), ElementName("ChLA", i));
        ChLA[e]->SetCaption(QStringLiteral("Low"));
        int column = 0;
        for (QWidget *cell : {static_cast<QWidget *>(Labch[e]), static_cast<QWidget *>(TextCH[e]),
                              static_cast<QWidget *>(LabCHunit[e]), static_cast<QWidget *>(ChHA[e]),
                              static_cast<QWidget *>(ChLA[e])})
            channels->addWidget(cell, i, column++);
    }
    channels->setColumnStretch(1, 1);
    CmdSlotSendAO = Named(new QPushButton(QStringLiteral("Se&nd"), this), "CmdSlotSendAO");

    FrameGrid grid(this);
    grid.WideRow(channels);
    grid.Buttons({CmdSlotSendAO});
    SetWritable(false);
}

void FrameSlotIO::SetWritable(bool writable)
{
    for (QLineEdit *value : TextCH) {
        value->setReadOnly(!writable);
        QPalette colours = palette();
        colours.setBrush(QPalette::Base, palette().brush(writable ? QPalette::Base : QPalette::Button));
        value->setPalette(colours);
    }
}

} // namespace vorn
