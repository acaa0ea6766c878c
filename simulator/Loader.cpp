#include "Loader.h"

#include "BusText.h"

#include <numeric>

namespace vornsim
{

namespace
{

constexpr int StartSpeed = 9600;
constexpr std::array<int, 4> Speeds{9600, 19200, 38400, 57600};
constexpr std::size_t NumberSize = 2;
constexpr std::size_t BlockSize = 128;
constexpr unsigned char FirstHighByteOfNone = 0x0D; ///< a carriage return; images are a quarter of that long

unsigned Byte(char c)
{
    return static_cast<unsigned char>(c);
}

std::size_t NumberOf(std::string_view frame)
{
    return Byte(frame[0]) * 256U + Byte(frame[1]);
}

bool IsSound(std::string_view frame)
{
    const std::string_view summed = frame.substr(0, NumberSize + BlockSize);
    const unsigned sum = std::accumulate(summed.begin(), summed.end(), 0U,
                                         [](unsigned total, char c) { return total + Byte(c); });
    return Byte(frame[NumberSize + BlockSize]) == (sum & 0xFF) && frame.back() == Return;
}

} // namespace

void Loader::Enter(int speed)
{
    *this = {};
    active_ = true;
    speed_ = speed;
}

Answer Loader::Execute(std::string_view command)
{
    startedLoader_ = false;
    if (command == "&A")
        return Done();
    if (command == "&D") {
        asked_ = permitted_ = true;
        return Done();
    }
    if (command == "&E")
        return Start();
    return command.size() == 3 && command.starts_with("&S") ? SetSpeed(command.back()) : Refused();
}

Answer Loader::SetSpeed(char digit)
{
    if (digit < '1' || digit > '4')
        return Refused();
    speed_ = Speeds.at(static_cast<std::size_t>(digit - '1'));
    return Done();
}

Answer Loader::Start()
{
    if (Present().empty())
        return Refused();
    startedLoader_ = kind_ == ImageKind::Loader;
    startedMain_ = kind_ == ImageKind::Main;
    kind_ = ImageKind::Main;
    speed_ = StartSpeed;
    asked_ = permitted_ = false;
    return Done();
}

bool Loader::BeginsFrame(char first) const
{
    return asked_ && Byte(first) < FirstHighByteOfNone;
}

Answer Loader::TakeFrame(std::string_view frame, std::size_t echo)
{
    std::string &image = Present();
    const std::size_t next = image.size() / BlockSize;
    const std::size_t number = NumberOf(frame);
    const bool again = number + 1 == next;
    if (!IsSound(frame) || !(again || (number == next && permitted_)))
        return Refused();
    image.resize(number * BlockSize);
    image += frame.substr(NumberSize, BlockSize);
    permitted_ = permitted_ && again;
    return {'!', false, std::string(frame.substr(1, echo))};
}

std::string Loader::NameOf(std::string_view frame) const
{
    return (kind_ == ImageKind::Loader ? "loader" : "main") + Decimal(NumberOf(frame), 4);
}

} // namespace vornsim
