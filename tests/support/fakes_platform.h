// A person, a disk and an operating system for tests: everything asked is recorded, everything answered was prepared.
#pragma once

#include <algorithm>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/codepage.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/runtime_error.h"
#include "platform/system_services.h"

namespace relvane::test {

class FakeDialogs : public Dialogs {
public:
    struct Box {
        Text text;
        int style = 0;
        Text title;
        bool operator==(const Box&) const = default;
    };
    struct FileDialog {
        Text filter, initialFolder, title;
    };

    std::vector<Box> boxes;
    std::deque<int> answers; // of the boxes to come; without one: OK, or Yes
    std::function<void()> whileBoxIsOpen;
    std::vector<FileDialog> fileDialogs;
    std::deque<Text> files; // chosen in the file dialogs to come; without one: cancelled

    int MsgBox(const Text& text, int style, const Text& title) override {
        boxes.push_back({text, style, title});
        if (whileBoxIsOpen) {
            whileBoxIsOpen();
        }
        if (answers.empty()) {
            return (style & 7) == yesNo ? boxYes : boxOk;
        }
        const int answer = answers.front();
        answers.pop_front();
        return answer;
    }
    Text openFile(const Text& filter, const Text& initialFolder, const Text& title) override {
        fileDialogs.push_back({filter, initialFolder, title});
        if (files.empty()) {
            return {};
        }
        const Text file = files.front();
        files.pop_front();
        return file;
    }
    Text saveFile(const Text& filter, const Text& initialFolder, const Text& title) override {
        return openFile(filter, initialFolder, title);
    }

    std::optional<PageMargins> margins; // the answer of the page setup; without one: cancelled
    std::vector<PageMargins> offeredMargins, leastMargins;
    int printDialogs = 0; // answered with OK

    bool PageSetupDlg(PageMargins& chosen, const PageMargins& least) override {
        offeredMargins.push_back(chosen);
        leastMargins.push_back(least);
        if (margins) {
            chosen = *margins;
        }
        return margins.has_value();
    }
    bool PrintDlg() override {
        ++printDialogs;
        return true;
    }

    std::deque<Text> passwords;       // the answers to come; without one: cancelled
    std::vector<Text> askedPasswords; // of which files

    std::optional<Text> askPassword(const Text& file) override {
        askedPasswords.push_back(file);
        if (passwords.empty()) {
            return std::nullopt;
        }
        Text password = std::move(passwords.front());
        passwords.pop_front();
        return password;
    }

    Text lastText() const { return boxes.empty() ? Text(u"(no box)") : boxes.back().text; }
};

class FakeClipboard : public Clipboard {
public:
    Picture content;
    std::vector<Text> calls; // "Clear", "SetData", "GetData"
    std::deque<int> errors;  // of the calls to come, 0 for one that works; behind them all work

    void Clear() override {
        call(u"Clear");
        content = {};
    }
    void SetData(const Picture& picture) override {
        call(u"SetData");
        content = picture;
    }
    Picture GetData() override {
        call(u"GetData");
        return content;
    }

private:
    void call(const Text& what) {
        calls.push_back(what);
        if (!errors.empty()) {
            const int number = errors.front();
            errors.pop_front();
            if (number != 0) {
                throw RunTimeError(number, u"説明");
            }
        }
    }
};

class FakeFiles : public Files {
    class Output : public OutputFile {
    public:
        Output(FakeFiles& files, Text path) : files_(files), path_(std::move(path)) {}
        void write(std::string_view bytes) override {
            Bytes& written = files_.content[path_];
            const std::size_t room = files_.outputRoom - std::min(files_.outputRoom, written.size());
            const bool fits = bytes.size() <= room;
            bytes = bytes.substr(0, room);
            written.insert(written.end(), bytes.begin(), bytes.end());
            if (!fits) {
                throw RunTimeError(ErrorNumber::DiskFull, path_);
            }
        }
        void close() override { files_.closed.push_back(path_); }

    private:
        FakeFiles& files_;
        Text path_;
    };

public:
    std::map<Text, Bytes> content;
    Text folder = u"C:\\Work";
    bool writable = true;
    std::map<Text, DateTime> changed;  // of the files that say so
    std::set<Text> readOnly;           // beside `writable`
    std::map<Text, Text> links;        // where links lead; one that is not here leads to the path itself
    int unreadableFolder = 0;          // the error of a listing, 0 when folders can be listed
    int outputError = 0;               // of opening a file for output, 0 when that works
    std::size_t outputRoom = SIZE_MAX; // bytes for which the disk has room
    std::vector<Text> closed;          // files for output, in order

    // Text in code page 932.
    void put(const Text& path, TextView text) {
        const std::string bytes = encode(text, japaneseCodePage);
        content[path] = Bytes(bytes.begin(), bytes.end());
    }
    Text text(const Text& path) { return decode(read(path), japaneseCodePage); }

    bool exists(const Text& path) override { return content.contains(path); }
    std::int64_t FileLen(const Text& path) override { return static_cast<std::int64_t>(read(path).size()); }
    DateTime FileDateTime(const Text& path) override {
        read(path);
        const auto found = changed.find(path);
        return found == changed.end() ? DateTime{} : found->second;
    }
    bool isReadOnly(const Text& path) override {
        read(path);
        return !writable || readOnly.contains(path);
    }
    bool isSameFile(const Text& path, const Text& other) override {
        return content.contains(path) && path == other;
    }
    std::vector<Text> Dir(const Text& pattern) override {
        if (unreadableFolder != 0) {
            throw RunTimeError(unreadableFolder, pattern);
        }
        std::vector<Text> names;
        const std::size_t behindFolder = lastSeparator(pattern) + 1;
        for (const auto& [path, bytes] : content) {
            const bool isHere =
                path.starts_with(pattern.substr(0, behindFolder)) && lastSeparator(path) + 1 == behindFolder;
            if (isHere && matchesPattern(path.substr(behindFolder), pattern.substr(behindFolder))) {
                names.push_back(path.substr(behindFolder));
            }
        }
        return names;
    }
    Text resolveLink(const Text& path, const Text&) override {
        const auto found = links.find(path);
        const Text& file = found == links.end() ? path : found->second;
        read(file);
        return file;
    }
    Bytes read(const Text& path) override {
        const auto found = content.find(path);
        if (found == content.end()) {
            throw RunTimeError(ErrorNumber::FileNotFound, path);
        }
        return found->second;
    }
    void write(const Text& path, const Bytes& bytes) override {
        if (!writable) {
            throw RunTimeError(ErrorNumber::PermissionDenied, path);
        }
        content[path] = bytes;
    }
    std::unique_ptr<OutputFile> openOutput(const Text& path) override {
        if (outputError != 0) {
            throw RunTimeError(outputError, path);
        }
        write(path, {});
        return std::make_unique<Output>(*this, path);
    }
    Text currentFolder() override { return folder; }
    void changeFolder(const Text& path) override { folder = path; }
};

class FakeSystem : public SystemServices {
public:
    SystemVersion reported;
    bool otherInstance = false;
    DateTime clock{1997, 9, 12, 18, 0, 0};
    std::vector<bool> screenSaver; // the calls in order
    bool settingsOpened = false;
    Text helpOpened;
    DiskSpace disk;
    Text processor;               // COMSPEC
    std::vector<Text> askedDisks; // folders
    std::vector<Text> commands, openedAddresses;
    int failing = 0; // the error of disks, commands and addresses, 0 when they work

    SystemVersion version() override { return reported; }
    bool previousInstance() override { return otherInstance; }
    DateTime now() override { return clock; }
    std::int32_t setScreenSaverActive(bool active) override {
        screenSaver.push_back(active);
        return 1;
    }
    void openScreenSaverSettings() override { settingsOpened = true; }
    void openHelp(const Text& path) override { helpOpened = path; }
    DiskSpace GetDiskFreeSpaceEx(const Text& folder) override {
        fail(folder);
        askedDisks.push_back(folder);
        return disk;
    }
    Text commandProcessor() override { return processor; }
    void Shell(const Text& command) override {
        fail(command);
        commands.push_back(command);
    }
    void openAddress(const Text& address) override {
        fail(address);
        openedAddresses.push_back(address);
    }

private:
    void fail(const Text& about) const {
        if (failing != 0) {
            throw RunTimeError(failing, about);
        }
    }
};

} // namespace relvane::test
