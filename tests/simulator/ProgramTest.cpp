// The program as a process.

#include "RackRunner.h"
#include "RawPeer.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fstream>
#include <iterator>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;

/// A run of the program with its output in a pipe.
class Process
{
public:
    explicit Process(std::vector<std::string> arguments, std::vector<std::string> environment = {})
    {
        int pipe[2] = {-1, -1};
        EXPECT_EQ(::pipe2(pipe, O_CLOEXEC), 0);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, pipe[1], STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions, pipe[1], STDERR_FILENO);
        arguments.insert(arguments.begin(), VORNSIM_PROGRAM);
        environment.emplace_back("PATH=/usr/bin:/bin");
        EXPECT_EQ(::posix_spawn(&pid_, VORNSIM_PROGRAM, &actions, nullptr, Pointers(arguments).data(),
                                Pointers(environment).data()),
                  0);
        posix_spawn_file_actions_destroy(&actions);
        ::close(pipe[1]);
        output_ = pipe[0];
    }
    ~Process()
    {
        if (pid_ > 0)
            End(SIGKILL);
        ::close(output_);
    }
    Process(const Process &) = delete;
    Process &operator=(const Process &) = delete;

    /// Reads its output until a text has come.
    bool Says(const std::string &text)
    {
        while (said_.find(text) == std::string::npos) {
            if (!ReadSome())
                return false;
        }
        return true;
    }
    const std::string &Said() const { return said_; }

    /// @return the exit code, or less than 0 for an end by signal
    int Wait()
    {
        while (ReadSome()) {
        }
        int status = 0;
        ::waitpid(pid_, &status, 0);
        pid_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }
    int End(int signal)
    {
        ::kill(pid_, signal);
        return Wait();
    }

private:
    static std::vector<char *> Pointers(std::vector<std::string> &texts)
    {
        std::vector<char *> pointers;
        for (std::string &text : texts)
            pointers.push_back(text.data());
        pointers.push_back(nullptr);
        return pointers;
    }

    bool ReadSome()
    {
        pollfd wait{output_, POLLIN, 0};
        char bytes[4096];
        if (::poll(&wait, 1, static_cast<int>(Patience / std::chrono::milliseconds(1))) <= 0)
            return false;
        const ssize_t count = ::read(output_, bytes, sizeof bytes);
        if (count > 0)
            said_.append(bytes, static_cast<std::size_t>(count));
        return count > 0;
    }

    pid_t pid_ = -1;
    int output_ = -1;
    std::string said_;
};

/// The time of the first line of a trace that has a text behind its time.
double MillisecondsOf(const std::string &trace, const std::string &text)
{
    const std::size_t at = trace.find(text);
    EXPECT_NE(at, std::string::npos) << text;
    const std::size_t start = trace.rfind('\n', at) + 1;
    return std::stod(trace.substr(start, at - start));
}

class Program : public testing::Test
{
protected:
    fs::path WriteRack(const std::string &text) const
    {
        const fs::path path = folder_.Path() / "test.rack";
        std::ofstream(path) << text;
        return path;
    }
    fs::path Ports() const { return folder_.Path() / "ports"; }

    TemporaryFolder folder_;
};

TEST_F(Program, RunsTheDemoRackUntilItIsEnded)
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        Process program({"--ports", Ports().string()});
        ASSERT_TRUE(program.Says("    10  7206  19200\n")) << program.Said();
        EXPECT_NE(program.Said().find("COM2  " + (Ports() / "com2").string() + " -> /dev/pts/"),
                  std::string::npos);
        EXPECT_NE(program.Said().find("    00  7252  9600  INIT, stored address 05\n"), std::string::npos);
        RawPeer peer(Ports() / "com2");
        ASSERT_TRUE(peer.Open());
        EXPECT_EQ(peer.Ask("$01M"), "!01VORN7203");
        EXPECT_EQ(program.End(signal), 0);
        EXPECT_FALSE(fs::exists(Ports()));
    }
}

TEST_F(Program, RunsARackFileAndTracesIt)
{
    const fs::path rack = WriteRack("port 7\nmodule 7252 address=01\nfault innerreturn text=\\x80\n");
    const fs::path trace = folder_.Path() / "trace";
    Process program(
        {"--rack", rack.string(), "--ports", Ports().string(), "--trace=" + trace.string(), "--pace"});
    ASSERT_TRUE(program.Says("    01  7252  9600\n"));
    RawPeer peer(Ports() / "com7");
    EXPECT_EQ(peer.Ask("$01M"), "!01VORN7252");
    EXPECT_EQ(peer.ReadBytes(1), "\x80");
    EXPECT_EQ(program.End(SIGTERM), 0);
    std::ifstream file(trace);
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    EXPECT_NE(text.find(" COM7 < $01M\\r\n"), std::string::npos) << text;
    EXPECT_NE(text.find(" COM7 > \\r\n"), std::string::npos) << text; // byte by byte
    EXPECT_NE(text.find(" COM7 > \\x80\n"), std::string::npos) << text;
}

TEST_F(Program, DelaysAllPortsOverTheRacksOwn)
{
    const fs::path rack =
        WriteRack("port 7 delay=60000\nmodule 7252 address=01\nport 8\nmodule 7252 address=01\n");
    Process program({"--rack", rack.string(), "--ports", Ports().string(), "--trace", "--delay", "40"});
    for (const std::string port : {"7", "8"}) {
        ASSERT_TRUE(program.Says("COM" + port + "  ")) << program.Said();
        ASSERT_TRUE(program.Says("    01  7252  9600\n")) << program.Said();
        RawPeer peer(Ports() / ("com" + port));
        EXPECT_EQ(peer.Ask("$01M"), "!01VORN7252");
        ASSERT_TRUE(program.Says(" COM" + port + " > !01VORN7252\\r\n")) << program.Said();
        const double asked = MillisecondsOf(program.Said(), " COM" + port + " < ");
        EXPECT_GE(MillisecondsOf(program.Said(), " COM" + port + " > ") - asked, 40) << program.Said();
    }
    EXPECT_EQ(program.End(SIGTERM), 0);
}

TEST_F(Program, TracesToItsOutput)
{
    const fs::path rack = WriteRack("port 7\nmodule 7252 address=01\n");
    Process program({"--rack", rack.string(), "--ports", Ports().string(), "--trace"});
    ASSERT_TRUE(program.Says("    01  7252  9600\n"));
    RawPeer peer(Ports() / "com7");
    EXPECT_EQ(peer.Ask("$01M"), "!01VORN7252");
    EXPECT_TRUE(program.Says(" COM7 < $01M\\r\n")) << program.Said();
    EXPECT_TRUE(program.Says(" COM7 > !01VORN7252\\r\n")) << program.Said();
    EXPECT_EQ(program.End(SIGINT), 0);
}

TEST_F(Program, LinksGoWhereTheUtilityLooksForThem)
{
    const fs::path rack = WriteRack("port 7\nmodule 7252 address=01\n");
    {
        Process program({"--rack", rack.string()}, {"XDG_CONFIG_HOME=" + folder_.Path().string()});
        ASSERT_TRUE(program.Says("    01  7252  9600\n")) << program.Said();
        EXPECT_TRUE(fs::is_symlink(folder_.Path() / "vorn" / "ports" / "com7"));
        EXPECT_EQ(program.End(SIGTERM), 0);
        EXPECT_FALSE(fs::exists(folder_.Path() / "vorn"));
    }
    Process program({"--rack", rack.string()}, {"HOME=" + folder_.Path().string()});
    ASSERT_TRUE(program.Says("    01  7252  9600\n")) << program.Said();
    EXPECT_TRUE(fs::is_symlink(folder_.Path() / ".config" / "vorn" / "ports" / "com7"));
    EXPECT_EQ(program.End(SIGTERM), 0);
}

TEST_F(Program, SaysWhatIsWrongWithARackFile)
{
    const fs::path rack = WriteRack("port 7\nmodule 7290 address=01\n");
    Process program({"--rack", rack.string(), "--ports", Ports().string()});
    EXPECT_EQ(program.Wait(), 1);
    EXPECT_EQ(program.Said(), "vornsim: " + rack.string() + ": line 2: unknown model \"7290\"\n");
    EXPECT_FALSE(fs::exists(Ports()));

    Process missing({"--rack", "/no/such.rack", "--ports", Ports().string()});
    EXPECT_EQ(missing.Wait(), 1);
    EXPECT_EQ(missing.Said(), "vornsim: can't read /no/such.rack\n");
}

TEST_F(Program, DoesntTakeANameThatIsInUse)
{
    fs::create_directory(Ports());
    std::ofstream(Ports() / "com4") << "mine";
    Process program({"--ports", Ports().string()});
    EXPECT_EQ(program.Wait(), 1);
    EXPECT_EQ(program.Said(), "vornsim: " + (Ports() / "com4").string() + " exists already\n");
    EXPECT_FALSE(fs::is_symlink(Ports() / "com2"));
    EXPECT_TRUE(fs::exists(Ports() / "com4"));
}

TEST_F(Program, HelpAndListNeedNoPorts)
{
    Process help({"--help"});
    EXPECT_EQ(help.Wait(), 0);
    EXPECT_EQ(help.Said().substr(0, 8), "vornsim ");
    EXPECT_NE(help.Said().find("--rack FILE"), std::string::npos);

    Process list({"--list-demo"});
    EXPECT_EQ(list.Wait(), 0);
    EXPECT_EQ(list.Said().substr(0, 11), "COM2  9600\n");
    EXPECT_NE(list.Said().find("    21  3900  9600  checksum  slots 0:3944 1:3946 2:3948 3:3953 4:3957\n"),
              std::string::npos);
}

TEST_F(Program, AWrongCommandLineIsAUsageError)
{
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
        {{"--fast"}, "vornsim: unknown option --fast\n"},
        {{"rack"}, "vornsim: unknown option rack\n"},
        {{"--rack"}, "vornsim: --rack needs a value\n"},
        {{"--pace", "--ports", ""}, "vornsim: --ports needs a value\n"},
        {{"--delay"}, "vornsim: --delay needs a value\n"},
        {{"--delay", "long"}, "vornsim: --delay takes milliseconds from 0 to 60000\n"},
        {{"--delay", "60001"}, "vornsim: --delay takes milliseconds from 0 to 60000\n"},
        {{"--trace="}, "vornsim: unknown option --trace=\n"},
        {{"--trace"}, "vornsim: no home folder: --ports is needed\n"},
    };
    for (const auto &[arguments, message] : cases) {
        Process program(arguments);
        EXPECT_EQ(program.Wait(), 2);
        EXPECT_EQ(program.Said().substr(0, message.size()), message);
    }
}

} // namespace
