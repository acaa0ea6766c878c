#pragma once

#include "support/RackOfOne.h"
#include "support/RawPeer.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <algorithm>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using Lines = std::vector<std::string>;

inline constexpr const char *SaveDone = "Save Configuration file is successful !";
inline constexpr const char *SaveDoneTitle = "Save Configuration file is successful";
inline constexpr const char *SaveFault = "Save Configuration file is fault !";
inline constexpr const char *SaveFaultTitle = "Save Configuration file is fault";
inline constexpr const char *LoadDone = "Configuration is successful !";
inline constexpr const char *LoadDoneTitle = "Configuration is successful";
inline constexpr const char *LoadFault = "Configuration is fault !";
inline constexpr const char *LoadFaultTitle = "Configuration is fault";

inline std::string Padded(const std::string &text, std::size_t width)
{
    return text + std::string(width - text.size(), ' ');
}

/// A file from labels and values.
inline std::string FileOf(const std::vector<std::pair<std::string, std::string>> &records)
{
    std::string text;
    for (const auto &[label, value] : records)
        text += Padded(Padded(label, 24) + value, 50) + "\r\n";
    return text;
}

/// Configuration files of a test's own folder, saved from and loaded to the modules of a rack, or to a peer
/// on COM3.
class ConfigurationTest : public ::testing::Test, public RackOfOne
{
protected:
    QTemporaryDir folder_;
    std::unique_ptr<RawPeer> peer_;

    std::string Path(const char *name) { return folder_.filePath(QString::fromLatin1(name)).toStdString(); }
    static std::string Read(const std::string &path)
    {
        std::ifstream file(path, std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }
    static void Put(const std::string &path, const std::string &text)
    {
        std::ofstream(path, std::ios::binary) << text;
    }

    void Peer() { peer_ = std::make_unique<RawPeer>(ports.Link(3)); }

    /// Adds a node and chooses it.
    void Show(Operator &op, const std::string &key, const char *timeOut = "250")
    {
        op.Gui([&] {
            main().TextTimeOut->setText(QString::fromLatin1(timeOut));
            main().Nodes.Add(std::string("KeyCOM00") + key[4], key,
                             "(" + vorn::NodeKey(key).address() + ") " + vorn::NodeKey(key).model(),
                             "vorn4ico", "vorn4icoS");
        });
        Choose(op, key);
    }

    void Save(Operator &op, const std::string &model, const std::string &path)
    {
        op.Trigger(main().VORNSaveSet);
        op.AnswerFile("Save As ---", model + ".txt", path);
    }
    void Load(Operator &op, const std::string &model, const std::string &path)
    {
        op.Trigger(main().VORNLoadSet);
        op.AnswerFile("Load As ---", model + ".txt", path);
    }

    /// Lines that were sent, but for those of the refresh and the ready waits.
    Lines Sent(const Lines &without)
    {
        Lines lines = peer_ ? peer_->Lines() : rack().Commands(2);
        std::erase_if(lines, [&](const std::string &line) { return std::ranges::count(without, line) > 0; });
        return lines;
    }
};
