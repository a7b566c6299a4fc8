#include "process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <sstream>
#include <stdexcept>

namespace okt::bench {
namespace {

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    void close() {
        if (number_ >= 0) ::close(number_);
        number_ = -1;
    }
    operator int() const { return number_; }

private:
    int number_;
};

using File = std::unique_ptr<FILE, decltype([](FILE* file) { std::fclose(file); })>;

// A file without a name. Unlike a pipe it holds any amount, so that nobody waits for anybody else to read.
File fileWith(const std::string& text) {
    File file(std::tmpfile());
    if (!file || std::fwrite(text.data(), 1, text.size(), file.get()) != text.size() || std::fflush(file.get()) != 0)
        throw std::runtime_error("cannot write a temporary file");
    std::rewind(file.get());
    return file;
}

pid_t start(const std::vector<std::string>& arguments, int input, int output) {
    std::vector<char*> words;
    words.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    pid_t process = 0;
    const int error = posix_spawnp(&process, words[0], &actions, nullptr, words.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) throw std::runtime_error("cannot run " + arguments[0]);
    return process;
}

std::string readAll(int descriptor) {
    std::string text;
    std::array<char, 65536> part;
    for (ssize_t n = 0; (n = read(descriptor, part.data(), part.size())) != 0;) {
        if (n > 0)
            text.append(part.data(), static_cast<std::size_t>(n));
        else if (errno != EINTR)
            break;
    }
    return text;
}

bool succeeded(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0)
        if (errno != EINTR) return false;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

std::vector<std::string> linesOf(const std::vector<std::string>& arguments, const std::string& input) {
    const File file = fileWith(input);
    std::array<int, 2> ends;
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("cannot make a pipe");
    const Descriptor reading(ends[0]);
    Descriptor writing(ends[1]);
    const pid_t process = start(arguments, fileno(file.get()), writing);
    writing.close();  // the end of the output shows only when nobody else holds this end
    const std::string text = readAll(reading);
    if (!succeeded(process)) {
        std::string command;
        for (const std::string& argument : arguments) command += ' ' + argument;
        throw std::runtime_error("failed:" + command);
    }
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

}  // namespace okt::bench
