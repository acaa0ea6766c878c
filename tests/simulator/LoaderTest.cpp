// A base unit that gets new firmware: the lines of its loader, and blocks in frames.

#include "RackRunner.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace
{

using vornsim::Fault;
using vornsim::ImageKind;

constexpr std::size_t BlockSize = 128;

/// A frame by hand, as the host has to build it.
std::string Frame(int number, const std::string &bytes)
{
    std::string frame{static_cast<char>(number / 256), static_cast<char>(number % 256)};
    frame += bytes;
    unsigned sum = 0;
    for (const char c : frame)
        sum += static_cast<unsigned char>(c);
    return frame + static_cast<char>(sum & 255) + '\r';
}

std::string Block(char fill)
{
    std::string bytes(BlockSize, fill);
    for (std::size_t i = 0; i < bytes.size(); i += 3)
        bytes[i] = static_cast<char>(i + static_cast<unsigned char>(fill));
    return bytes;
}

class LoaderRun : public testing::Test
{
protected:
    RackRunner rack_{"module 3900 address=00 slots=3921 loaderstart=0 restart=0"};

    std::string Say(const std::string &line) { return rack_.Peer().Ask(line); }
    /// Sends bytes without a carriage return behind them.
    std::string Give(const std::string &frame)
    {
        rack_.Peer().Write(frame);
        return rack_.Peer().ReadLine();
    }
    /// Nothing comes: the answer to the next line is the first that does.
    void ExpectSilence(const std::string &bytes)
    {
        rack_.Peer().Write(bytes);
        EXPECT_EQ(Say("&00A"), "!00");
    }
    void EnterDownload() { ASSERT_EQ(Say("$00D"), "!00"); }
    void SendLoader()
    {
        ASSERT_EQ(Say("&00D"), "!00");
        ASSERT_EQ(Give(Frame(0, Block('l'))), std::string("!") + '\0' + Block('l')[0]);
        ASSERT_EQ(Say("&00E"), "!00");
    }
    void Faulty(Fault fault) { rack_.Rack().SetFault(1, "00", std::move(fault)); }
};

TEST_F(LoaderRun, InDownloadModeTheUnitKnowsTheLinesOfItsLoaderOnly)
{
    EXPECT_EQ(Say("$00M"), "!00VORN3900");
    rack_.Peer().Write("&00A\r");
    EXPECT_EQ(Say("$00T"), "!0021FFFFFFFF") << "the loader's lines are unknown before";
    EnterDownload();
    EXPECT_EQ(rack_.Value("00", "download"), "yes");
    ExpectSilence("$00M\r");
    ExpectSilence("&01A\r");
    EXPECT_EQ(Say("&00X"), "?00");
    EXPECT_EQ(Say("&00S5"), "?00");
    EXPECT_EQ(Say("&00E"), "?00") << "nothing was loaded";
    rack_.Set("00", "download", "no");
    EXPECT_EQ(Say("$00M"), "!00VORN3900");
}

TEST(Loader, OnlyBaseUnitsHaveOne)
{
    RackRunner rack("module 7252 address=00");
    EXPECT_EQ(rack.Ask("$00D"), "?00");
}

TEST_F(LoaderRun, EachOfTheFourSpeedsHoldsBehindItsAnswer)
{
    EnterDownload();
    for (const auto &[line, speed] :
         {std::pair{"&00S2", 19200}, {"&00S3", 38400}, {"&00S4", 57600}, {"&00S1", 9600}}) {
        EXPECT_EQ(Say(line), "!00") << "at the speed before";
        const int before = rack_.Rack().LineSpeed(1);
        if (before != speed) {
            rack_.Peer().Write("&00A\r"); // not heard
            (void)rack_.Rack().Commands(1);
        }
        rack_.Peer().SetSpeed(speed);
        EXPECT_EQ(Say(line), "!00");
        EXPECT_EQ(Say("&00A"), "!00");
    }
}

TEST_F(LoaderRun, ABlockNeedsPermission)
{
    EnterDownload();
    EXPECT_EQ(Say("&00D"), "!00");
    EXPECT_EQ(Give(Frame(0, Block('a'))), std::string("!") + '\0' + Block('a')[0]);
    EXPECT_EQ(Give(Frame(1, Block('b'))), "?00");
    EXPECT_EQ(Say("&00D"), "!00");
    EXPECT_EQ(Give(Frame(1, Block('b'))), std::string("!\1") + Block('b')[0]);
    EXPECT_EQ(rack_.Rack().Image(1, "00", ImageKind::Loader), Block('a') + Block('b'));
}

TEST_F(LoaderRun, ABlockThatWasTakenIsTakenOnceMore)
{
    EnterDownload();
    EXPECT_EQ(Say("&00D"), "!00");
    EXPECT_EQ(Give(Frame(0, Block('a')))[0], '!');
    EXPECT_EQ(Say("&00D"), "!00");
    EXPECT_EQ(Give(Frame(0, Block('c')))[0], '!');
    EXPECT_EQ(Give(Frame(1, Block('b')))[0], '!') << "the permission is still there";
    EXPECT_EQ(rack_.Rack().Image(1, "00", ImageKind::Loader), Block('c') + Block('b'));
}

TEST_F(LoaderRun, AFrameThatIsWrongAnywhereIsRefused)
{
    EnterDownload();
    EXPECT_EQ(Say("&00D"), "!00");
    std::string sum = Frame(0, Block('a'));
    ++sum[130];
    EXPECT_EQ(Give(sum), "?00");
    std::string byte = Frame(0, Block('a'));
    ++byte[77];
    EXPECT_EQ(Give(byte), "?00");
    std::string end = Frame(0, Block('a'));
    end[131] = '\n';
    EXPECT_EQ(Give(end), "?00");
    EXPECT_EQ(Give(Frame(2, Block('a'))), "?00");
    EXPECT_EQ(Give(Frame(0, Block('a')))[0], '!') << "and is taken without another permission";
    EXPECT_EQ(rack_.Rack().Image(1, "00", ImageKind::Loader), Block('a'));
}

TEST_F(LoaderRun, AFrameMayHoldCarriageReturnsAndComeInPieces)
{
    EnterDownload();
    EXPECT_EQ(Say("&00D"), "!00");
    const std::string frame = Frame(0, std::string(BlockSize, '\r'));
    rack_.Peer().Write(frame.substr(0, 50));
    (void)rack_.Rack().Commands(1);
    rack_.Peer().Write(frame.substr(50));
    rack_.Peer().ReadBytes(4);
    EXPECT_EQ(rack_.Rack().Image(1, "00", ImageKind::Loader), std::string(BlockSize, '\r'));
}

TEST_F(LoaderRun, TheEchoCanBeShorter)
{
    rack_.Set("00", "echo", "0");
    EnterDownload();
    EXPECT_EQ(Say("&00D"), "!00");
    EXPECT_EQ(Give(Frame(0, Block('a'))), "!");
    rack_.Set("00", "echo", "1");
    EXPECT_EQ(Give(Frame(0, Block('a'))), std::string("!") + '\0');
    EXPECT_THROW(rack_.Set("00", "echo", "3"), std::invalid_argument);
}

TEST_F(LoaderRun, TheLoaderImageStartsAt9600AndTakesTheMainImage)
{
    EnterDownload();
    EXPECT_EQ(Say("&00S4"), "!00");
    rack_.Peer().SetSpeed(57600);
    SendLoader();
    rack_.Peer().SetSpeed(9600);
    EXPECT_EQ(Say("&00A"), "!00");
    EXPECT_EQ(Say("&00D"), "!00");
    EXPECT_EQ(Give(Frame(0, Block('m')))[0], '!');
    EXPECT_EQ(Say("&00D"), "!00");
    EXPECT_EQ(Give(Frame(1, Block('n')))[0], '!');
    EXPECT_EQ(Say("&00E"), "!00");
    EXPECT_EQ(Say("$00M"), "!00VORN3900") << "the unit has started again";
    EXPECT_EQ(rack_.Value("00", "download"), "no");
    EXPECT_EQ(rack_.Rack().Image(1, "00", ImageKind::Loader), Block('l'));
    EXPECT_EQ(rack_.Rack().Image(1, "00", ImageKind::Main), Block('m') + Block('n'));
}

TEST_F(LoaderRun, AnImageThatStartsIsSilentAtFirst)
{
    rack_.Set("00", "loaderstart", "60000");
    EnterDownload();
    SendLoader();
    EXPECT_TRUE(rack_.IsSilent("&00A"));
    rack_.Set("00", "download", "no");
    EXPECT_TRUE(rack_.IsSilent("$00M"));
}

TEST_F(LoaderRun, BlocksHaveNamesInListingsAndMeetFaultsByThem)
{
    Faulty({.kind = Fault::Kind::Silent, .begins = "loader0000", .times = 1});
    Faulty({.kind = Fault::Kind::Refuse, .begins = "main0001", .times = 1});
    EnterDownload();
    EXPECT_EQ(Say("&00D"), "!00");
    ExpectSilence(Frame(0, Block('l')));
    EXPECT_EQ(Give(Frame(0, Block('l')))[0], '!');
    EXPECT_EQ(Say("&00E"), "!00");
    EXPECT_EQ(Say("&00D"), "!00");
    EXPECT_EQ(Give(Frame(0, Block('m')))[0], '!');
    EXPECT_EQ(Say("&00D"), "!00");
    EXPECT_EQ(Give(Frame(1, Block('m'))), "?00");
    EXPECT_EQ(Give(Frame(1, Block('m')))[0], '!');
    EXPECT_EQ(rack_.Rack().Commands(1),
              (std::vector<std::string>{"$00D", "&00D", "loader0000", "&00A", "loader0000", "&00E", "&00D",
                                        "main0000", "&00D", "main0001", "main0001"}));
}

TEST_F(LoaderRun, LinesMeetFaultsToo)
{
    Faulty({.kind = Fault::Kind::Refuse, .begins = "$00D", .times = 1});
    EXPECT_EQ(Say("$00D"), "?00");
    EXPECT_EQ(rack_.Value("00", "download"), "no");
    EnterDownload();
    Faulty({.kind = Fault::Kind::Refuse, .begins = "&00D", .times = 1});
    Faulty({.kind = Fault::Kind::NoReturn, .begins = "&00S", .times = 1});
    EXPECT_EQ(Say("&00D"), "?00");
    rack_.Peer().Write("&00S1\r&00A\r");
    EXPECT_EQ(rack_.Peer().ReadLine(), "!00!00");
}

TEST(Loader, ThePortsFaultsActWhereTheUnitHasNone)
{
    RackRunner rack("fault refuse begins=&00A times=1\nmodule 3900 address=00 download=yes");
    EXPECT_EQ(rack.Peer().Ask("&00A"), "?00");
    EXPECT_EQ(rack.Peer().Ask("&00A"), "!00");
}

TEST(Loader, TheImagesAreSavedWhenTheMainOneStarts)
{
    const TemporaryFolder folder;
    RackRunner rack("module 3900E address=00 loaderstart=0 restart=0 download=yes images=" +
                    folder.Path().string());
    for (const char *name : {"loader.img", "main.img"}) {
        EXPECT_FALSE(std::filesystem::exists(folder.Path() / name));
        EXPECT_EQ(rack.Peer().Ask("&00D"), "!00");
        rack.Peer().Write(Frame(0, Block(name[0])));
        EXPECT_EQ(rack.Peer().ReadLine()[0], '!');
        EXPECT_EQ(rack.Peer().Ask("&00E"), "!00");
    }
    for (const char *name : {"loader.img", "main.img"}) {
        std::ifstream file(folder.Path() / name, std::ios::binary);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), Block(name[0]));
    }
}

} // namespace
