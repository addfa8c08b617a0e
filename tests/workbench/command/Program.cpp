#include "Program.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::string ContentOf(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

pid_t Spawn(const std::vector<std::string>& arguments, const std::string& out, const std::string& errors) {
    std::vector<char*> words = {const_cast<char*>(QUILLARA_PROGRAM)};
    for (const std::string& argument : arguments) {
        words.push_back(const_cast<char*>(argument.c_str()));
    }
    words.push_back(nullptr);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, 1, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&files, 2, errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    pid_t process = -1;
    posix_spawn(&process, words.front(), &files, nullptr, words.data(), environ);
    posix_spawn_file_actions_destroy(&files);
    return process;
}

std::string CellText(const nlohmann::json& cell) {
    return cell.is_string() ? cell.get<std::string>() : cell.dump();
}

std::string DocumentInShort(const nlohmann::json& document) {
    const auto title = document.at("title").at(0).get<std::string>();
    std::string text = std::to_string(document.at("command").get<int>()) + "." +
                       std::to_string(document.at("sequence").get<int>()) + "@" +
                       std::to_string(document.at("step").get<int>()) + " " + title.substr(title.rfind(' ') + 1) + ":";
    for (const nlohmann::json& row : document.at("rows")) {
        text += (text.back() == ':' ? " " : ", ") + row.at("name").get<std::string>() + " " +
                CellText(row.at("cells").at(0));
    }
    return text;
}

}  // namespace

Outcome Quillara(const std::vector<std::string>& arguments, int interruptAfter) {
    const Folder folder;
    const pid_t process = Spawn(arguments, folder.Path("out"), folder.Path("errors"));
    if (interruptAfter > 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(interruptAfter));
        kill(process, SIGINT);
    }
    int status = 0;
    waitpid(process, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), folder.Read("out"),
            folder.Read("errors")};
}

std::vector<std::string> Words(const std::string& line) {
    std::vector<std::string> words;
    bool isQuoted = false;
    bool isOpen = false;
    for (const char character : line) {
        if (character == '\'') {
            isQuoted = !isQuoted;
        }
        const bool separates = character == ' ' && !isQuoted;
        if (!separates && !isOpen) {
            words.emplace_back();
        }
        isOpen = !separates;
        if (isOpen && character != '\'') {
            words.back() += character;
        }
    }
    return words;
}

Folder::Folder() {
    std::string name = (std::filesystem::temp_directory_path() / "quillara-test-XXXXXX").string();
    Root = mkdtemp(name.data());
}

Folder::~Folder() {
    std::filesystem::remove_all(Root);
}

std::string Folder::Write(const std::string& name, const std::string& content) const {
    std::ofstream(Path(name), std::ios::binary) << content;
    return Path(name);
}

std::string Folder::Path(const std::string& name) const {
    return Root + "/" + name;
}

std::string Folder::Read(const std::string& name) const {
    return ContentOf(Path(name));
}

std::vector<std::string> Folder::Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(Root)) {
        names.push_back(entry.path().filename().string());
    }
    return names;
}

std::string InShort(const nlohmann::json& outputs) {
    std::string text;
    for (const nlohmann::json& document : outputs.at("documents")) {
        text += (text.empty() ? "" : " | ") + DocumentInShort(document);
    }
    return text;
}
