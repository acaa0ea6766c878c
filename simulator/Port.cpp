#include "Port.h"

#include "BusText.h"

#include <algorithm>
#include <utility>

namespace vornsim
{

namespace
{

constexpr std::size_t KeptRecords = 100000; // of trace and of commands; the oldest are dropped
constexpr std::size_t LongestLine = 4096;   // characters behind that are dropped until the carriage return
constexpr int BitsOfByte = 10;              // start, eight data, stop
constexpr std::chrono::nanoseconds LeastPiece = std::chrono::milliseconds(1);
constexpr int LinesAtOnce = 32; // from a second master without pauses, before the other ports have their turn

} // namespace

Port::Port(const PortDescription &description, std::filesystem::path folder, TimePoint start,
           const Listener &listener)
    : number_(description.number), speed_(description.speed), pace_(description.pace),
      delay_(description.delay), folder_(std::move(folder)), start_(start), listener_(listener),
      lastSpeed_(description.speed)
{
    modules_.reserve(description.modules.size());
    unsigned seed = 0;
    for (ModuleDescription module : description.modules) {
        module.settings.insert(module.settings.begin(), {"baud", std::to_string(speed_), module.line});
        modules_.emplace_back(module, seed++);
    }
    for (const Fault &fault : description.faults)
        faults_.Set(fault);
    terminal_ = std::make_unique<PseudoTerminal>(speed_);
    MakeLink();
    SetMaster(description.master, start);
}

void Port::MakeLink()
{
    link_ = std::make_unique<PortLink>(folder_ / ("com" + std::to_string(number_)), terminal_->Path());
}

std::string Port::LinkTarget() const
{
    return terminal_ ? terminal_->Path() : "";
}

std::vector<std::string> Port::Describe() const
{
    std::vector<std::string> lines;
    std::transform(modules_.begin(), modules_.end(), std::back_inserter(lines),
                   [](const Module &module) { return module.Describe(); });
    return lines;
}

std::chrono::nanoseconds Port::ByteTime() const
{
    return std::chrono::nanoseconds(pace_ && lastSpeed_ > 0 ? 1'000'000'000LL * BitsOfByte / lastSpeed_ : 0);
}

void Port::Receive(double time, TimePoint now)
{
    if (!terminal_)
        return;
    const std::string bytes = terminal_->Read();
    if (bytes.empty())
        return;
    lastSpeed_ = terminal_->Speed();
    Record(TraceRecord::Direction::FromHost, bytes, now);
    hostFree_ = std::max(hostFree_, now);
    for (const char c : bytes) {
        hostFree_ += ByteTime();
        if (partial_.empty())
            frameTaker_ = TakerOfFrame(c);
        if (frameTaker_) {
            partial_ += c;
            if (partial_.size() == Loader::FrameSize)
                HearFrame(std::exchange(partial_, {}), hostFree_);
            continue;
        }
        if (c != vornsim::Return) {
            if (partial_.size() < LongestLine)
                partial_ += c;
            continue;
        }
        HearHost(std::exchange(partial_, {}), time, hostFree_);
    }
}

void Port::HearHost(std::string_view line, double time, TimePoint complete)
{
    commands_.emplace_back(line);
    if (commands_.size() > KeptRecords)
        commands_.pop_front();
    Answer(line, lastSpeed_, time, complete, delay_);
}

Module *Port::TakerOfFrame(char first)
{
    const auto found = std::find_if(modules_.begin(), modules_.end(), [&](const Module &module) {
        return module.BeginsFrame(first, lastSpeed_);
    });
    return found == modules_.end() ? nullptr : &*found;
}

void Port::HearFrame(std::string_view frame, TimePoint complete)
{
    commands_.push_back(frameTaker_->NameOfFrame(frame));
    if (commands_.size() > KeptRecords)
        commands_.pop_front();
    EnqueueHeard(frameTaker_->HearFrame(frame, faults_), complete + delay_);
}

/// Two modules at one address both answer, one reply behind the other.
void Port::Answer(std::string_view line, int speed, double time, TimePoint complete,
                  std::chrono::milliseconds delay)
{
    for (Module &module : modules_)
        EnqueueHeard(module.Hear(line, speed, time, complete, faults_), complete + delay);
}

void Port::EnqueueHeard(const std::optional<Module::Heard> &heard, TimePoint from)
{
    if (heard)
        Enqueue(heard->fault ? Spoil(heard->reply, *heard->fault) : std::vector<Piece>{{heard->reply.Line()}},
                from);
}

void Port::Enqueue(const std::vector<Piece> &pieces, TimePoint from)
{
    for (const Piece &piece : pieces) {
        lineFree_ = std::max(lineFree_, from) + piece.delay;
        if (piece.bytes.empty())
            continue;
        if (ByteTime().count() > 0)
            EnqueuePaced(piece.bytes, lineFree_);
        else
            due_.push_back({lineFree_, piece.bytes});
    }
}

/// A byte is due at the end of its last bit. The bytes of one millisecond are sent in one piece.
void Port::EnqueuePaced(std::string_view bytes, TimePoint from)
{
    const auto size =
        static_cast<std::size_t>(std::max<std::chrono::nanoseconds::rep>(1, LeastPiece / ByteTime()));
    lineFree_ = from;
    for (std::size_t at = 0; at < bytes.size(); at += size) {
        const std::string_view piece = bytes.substr(at, size);
        lineFree_ += ByteTime() * static_cast<std::chrono::nanoseconds::rep>(piece.size());
        due_.push_back({lineFree_, std::string(piece)});
    }
}

void Port::Send(double time, TimePoint now)
{
    if (!terminal_)
        return;
    WriteDue(now);
    SpeakDue(time, now);
}

/// What is sent while no host has the port open is lost, as on a wire.
void Port::WriteDue(TimePoint now)
{
    blocked_ = false;
    while (!due_.empty() && due_.front().when <= now && !blocked_) {
        std::string &bytes = due_.front().bytes;
        NoticeHosts();
        const std::size_t done = terminal_->HostPresent() ? terminal_->Write(bytes) : bytes.size();
        if (done > 0)
            Record(TraceRecord::Direction::ToHost, bytes.substr(0, done), now);
        blocked_ = done < bytes.size();
        bytes.erase(0, done);
        if (!blocked_)
            due_.pop_front();
    }
}

void Port::SpeakDue(double time, TimePoint now)
{
    const bool fastest = master_ && master_->every.count() == 0;
    for (int lines = 0; master_ && masterDue_ <= now && lines < LinesAtOnce; ++lines) {
        if (fastest && MasterWaits())
            return;
        SpeakOnce(time, now);
        WriteDue(now);
    }
}

/// A second master without pauses waits until a host has the port open and has read all that was sent before.
bool Port::MasterWaits() const
{
    return !due_.empty() || !terminal_->HostPresent();
}

void Port::SpeakOnce(double time, TimePoint now)
{
    std::string line = master_->send[masterNext_];
    masterNext_ = (masterNext_ + 1) % master_->send.size();
    if (master_->checksum)
        line += Checksum(line);

    const std::size_t first = due_.size();
    Enqueue({{line + vornsim::Return}}, now);
    const int speed = std::exchange(lastSpeed_, speed_); // another master always has the speed of the port
    Answer(line, speed_, time, lineFree_, std::chrono::milliseconds(0));
    lastSpeed_ = speed;
    if (master_->cut > 0)
        CutFrom(first);

    masterDue_ = std::max(masterDue_ + master_->every, now);
    if (masterLeft_ > 0 && --masterLeft_ == 0)
        master_.reset();
}

/// Cuts every piece that is due, from number `first` on, in two, and lets the later ones wait.
void Port::CutFrom(std::size_t first)
{
    std::chrono::milliseconds later{0};
    for (std::size_t at = first; at < due_.size(); ++at) {
        due_[at].when += later;
        std::string &bytes = due_[at].bytes;
        if (master_->cut >= bytes.size())
            continue;
        later += master_->gap;
        Due rest{due_[at].when + master_->gap, bytes.substr(master_->cut)};
        bytes.resize(master_->cut);
        due_.insert(due_.begin() + static_cast<std::ptrdiff_t>(++at), std::move(rest));
    }
    lineFree_ += later;
}

std::optional<TimePoint> Port::NextDue() const
{
    std::optional<TimePoint> next;
    if (!terminal_)
        return next;
    if (!due_.empty() && !blocked_)
        next = due_.front().when;
    const bool fastest = master_ && master_->every.count() == 0;
    if (master_ && !(fastest && MasterWaits()))
        next = next ? std::min(*next, masterDue_) : masterDue_;
    return next;
}

void Port::NoticeHosts()
{
    if (terminal_ && terminal_->Watch(master_.has_value()))
        partial_.clear();
}

void Port::Vanish()
{
    if (!terminal_)
        return;
    link_->PointTo(terminal_->Path() + ".gone");
    lastSpeed_ = terminal_->Speed();
    terminal_.reset();
    due_.clear();
    partial_.clear();
    hostFree_ = lineFree_ = {}; // replies that were on their way don't hold up those after the return
    blocked_ = false;
}

void Port::Pull()
{
    Vanish();
    link_.reset();
}

void Port::Return()
{
    if (terminal_)
        return;
    terminal_ = std::make_unique<PseudoTerminal>(speed_);
    try {
        if (link_)
            link_->PointTo(terminal_->Path());
        else
            MakeLink();
    } catch (...) {
        terminal_.reset(); // still unplugged
        throw;
    }
}

Module &Port::At(std::string_view address)
{
    const auto found = std::find_if(modules_.begin(), modules_.end(),
                                    [&](const Module &module) { return module.Address() == address; });
    if (found == modules_.end())
        throw std::invalid_argument("no module at address " + std::string(address) + " on port " +
                                    std::to_string(number_));
    return *found;
}

void Port::ClearFaults()
{
    faults_.Clear();
    for (Module &module : modules_)
        module.OwnFaults().Clear();
}

void Port::SetMaster(std::optional<Master> master, TimePoint now)
{
    master_ = std::move(master);
    if (master_ && master_->send.empty())
        master_.reset();
    masterNext_ = 0;
    masterLeft_ = master_ ? master_->times : 0;
    masterDue_ = now;
}

void Port::ClearTrace()
{
    commands_.clear();
    trace_.clear();
}

int Port::LineSpeed() const
{
    return terminal_ ? terminal_->Speed() : lastSpeed_;
}

void Port::Record(TraceRecord::Direction direction, std::string bytes, TimePoint now)
{
    const double milliseconds = std::chrono::duration<double, std::milli>(now - start_).count();
    trace_.push_back({milliseconds, direction, std::move(bytes)});
    if (trace_.size() > KeptRecords)
        trace_.pop_front();
    if (listener_)
        listener_(number_, trace_.back());
}

} // namespace vornsim
