#include "Stand.h"

#include "platform/WidgetText.h"
#include "protocol/NodeKey.h"

#include <QApplication>
#include <QComboBox>
#include <QEventLoop>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <thread>

#include <sys/resource.h>

namespace
{

using namespace std::chrono_literals;

const std::string Description = R"(
port 2
module 7203 address=01
module 7221 address=02
module 7203 address=03
fault silent begins=#03
module 7206 address=04 restart=3000
module 7224M address=09 memory=FF000000A records=65535
port 3 speed=115200 pace=yes
module 7203 address=01
module 7221P address=02
module 7254 address=03
module 7224M address=09 memory=FF000000A records=2000
port 4 speed=9600 pace=yes
module 7203 address=01
module 7224M address=09 memory=FF000000A records=500
port 5
module 7203 address=01
fault silent
port 6
module 7203 address=00..0F
module 7203 address=10..1F
fault noreturn
port 9 pace=yes
module 3900 address=00 restart=100 loaderstart=100
port 7
module 3900E address=00 restart=0 slots=3923,3923,3923,3923,3923,3923,3923,3923
module 3900E address=01..FF slots=3923,3923,3923,3923,3923,3923,3923,3923
)";

} // namespace

RackProcess::RackProcess(const std::string &description)
{
    std::string pattern = (std::filesystem::temp_directory_path() / "vorn-bench.XXXXXX").string();
    if (!::mkdtemp(pattern.data()))
        throw std::runtime_error("no folder for the rack");
    home_ = pattern;
    ::setenv("XDG_CONFIG_HOME", home_.c_str(), 1);
    ::setenv("XDG_RUNTIME_DIR", home_.c_str(), 1);
    std::ofstream(home_ / "rack") << description;
    rack_ = std::make_unique<Child>(Child::Command{RACK_FILE, "--rack", home_ / "rack"}, Child::Variables{},
                                    Child::Output::Read);
    // The first line that it writes comes when all ports are there.
    if (rack_->ReadLine(20s).empty())
        throw std::runtime_error("the rack doesn't start");
}

RackProcess::~RackProcess()
{
    rack_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(home_, ignored);
}

std::filesystem::path RackProcess::Link(int port) const
{
    return home_ / "vorn/ports" / ("com" + std::to_string(port));
}

BoxAnswers::BoxAnswers()
{
    qApp->installEventFilter(this);
}

bool BoxAnswers::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Show)
        return false;
    if (auto *question = qobject_cast<QInputDialog *>(watched)) {
        question->setTextValue(QString::fromStdString(StartAddress));
        QMetaObject::invokeMethod(
            question,
            [this, question] {
                Answered = Steady::now();
                question->accept();
            },
            Qt::QueuedConnection);
    } else if (auto *box = qobject_cast<QMessageBox *>(watched)) {
        Message = Steady::now();
        QMetaObject::invokeMethod(box, &QDialog::accept, Qt::QueuedConnection);
    }
    return false;
}

Stand::Stand() : rack_(Description), program_({.ports = ports_, .clock = clock_})
{
    if (!program_.Load())
        throw std::runtime_error("the program finds no port");
    program_.Main.show();
    Rest(100ms);
}

void Stand::ChoosePort(int port, const LineSpeed &speed, int timeOut)
{
    const std::string key = vorn::PortKey(port);
    Main().Nodes.SetExpanded(key, false);
    Choose(key);
    Main().CmbPBaudrate->setCurrentIndex(speed.index);
    Main().TextTimeOut->setText(QString::number(timeOut));
    Rest(200ms); // the timer that a click arms
}

void Stand::Choose(const std::string &key)
{
    Main().Nodes.Select(key);
    Main().ChooseNode(key);
}

Milliseconds Stand::Search(int startAddress)
{
    answers_.StartAddress = std::to_string(startAddress);
    answers_.Message.reset();
    program_.BusSearch.Search_Click();
    return answers_.Message.value_or(Steady::now()) - answers_.Answered;
}

void Stand::Rest(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

double ProcessorSeconds()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}
