#pragma once

namespace vorn
{

/// State of the terminal's sending: of single sends, and of the loop that Continue Send begins and Stop ends.
class SendLoop final
{
public:
    /// Says for a send that waits for its turn whether a stop has come since.
    class Ticket final
    {
    public:
        friend bool operator==(Ticket, Ticket) = default;

    private:
        friend class SendLoop;
        explicit Ticket(int stops) : stops_(stops) {}
        int stops_;
    };
    Ticket Ask() const { return Ticket(stops_); }
    bool Holds(Ticket ticket) const { return ticket == Ask(); }

    /// A single command or line is about to be sent; true if the log is to be cleared first, since it had run
    /// full.
    bool BeginSend();
    /// The loop begins, with an empty log.
    void BeginLoop();
    /// The rounds are counted from the first one again: a file is played from here on.
    void CountAnew() { rounds_ = 0; }
    /// Number of the next round of the loop, or line of the file, from 1 on.
    double NextRound() { return ++rounds_; }
    double Rounds() const { return rounds_; }

    /// Ends the loop, and takes back what waits for its turn.
    void Stop();
    /// The log has no room for the next record: the loop ends, and the next send clears the log.
    void LogIsFull();

    /// `ContinueMode`: the loop goes on, and records have numbers.
    bool IsLooping() const { return looping_; }

private:
    bool looping_ = false;
    bool clearOnSend_ = false; ///< `ClearOnSend`
    int stops_ = 0;
    float rounds_ = 0; ///< `RoundCount`
};

} // namespace vorn
