#include "quorvelin/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace quorvelin::tool {

namespace {

// An open file that closes itself.
class Descriptor {
  public:
    explicit Descriptor(int descriptor) : descriptor_(descriptor) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (isOpen()) ::close(descriptor_);
    }

    bool isOpen() const { return descriptor_ >= 0; }
    int number() const { return descriptor_; }

    // Closes now, which is when some systems report that writing failed.
    bool close() { return ::close(std::exchange(descriptor_, -1)) == 0; }

  private:
    int descriptor_;
};

// Longer files cannot be held as a text in any case.
constexpr size_t kLargestInput = size_t{1} << 31;

// Appends all there is to `bytes`; 0, or the number of the system's error.
int readAll(int descriptor, std::string& bytes) {
    constexpr size_t kPiece = 256 * 1024;
    for (;;) {
        const size_t size = bytes.size();
        if (size > kLargestInput) return EFBIG;
        bytes.resize(size + kPiece);
        const ssize_t count = ::read(descriptor, bytes.data() + size, kPiece);
        const int error = errno;
        bytes.resize(size + (count > 0 ? static_cast<size_t>(count) : 0));
        if (count == 0) return 0;
        if (count < 0 && error != EINTR) return error;
    }
}

int writeAll(int descriptor, std::string_view bytes) {
    Output output(descriptor);
    output.write(bytes);
    output.flush();
    return output.failure() != 0 ? output.failure() : output.isClosed() ? EPIPE : 0;
}

// Replaces a regular file, or makes a new one: everything goes to a file beside it, which takes its place in
// the end.
int replaceFile(const std::string& name, std::string_view bytes, const struct stat* existing) {
    std::string temporary = name + ".XXXXXX";
    Descriptor file(::mkstemp(temporary.data()));
    if (!file.isOpen()) return errno;
    mode_t mode = 0;
    if (existing != nullptr) {
        mode = existing->st_mode & 07777;
    } else {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        mode = 0666 & ~mask;
    }
    int error = writeAll(file.number(), bytes);
    if (error == 0 && ::fchmod(file.number(), mode) != 0) error = errno;
    if (!file.close() && error == 0) error = errno;
    if (error == 0 && ::rename(temporary.c_str(), name.c_str()) != 0) error = errno;
    if (error != 0) ::unlink(temporary.c_str());
    return error;
}

// Writes into what is no regular file, such as a device or a pipe.
int writeInPlace(const std::string& name, std::string_view bytes) {
    Descriptor file(::open(name.c_str(), O_WRONLY | O_CLOEXEC));
    if (!file.isOpen()) return errno;
    const int error = writeAll(file.number(), bytes);
    return file.close() || error != 0 ? error : errno;
}

int writeNamed(const std::string& name, std::string_view bytes) {
    struct stat existing;
    if (::stat(name.c_str(), &existing) != 0)
        return errno == ENOENT ? replaceFile(name, bytes, nullptr) : errno;
    if (S_ISDIR(existing.st_mode)) return EISDIR;
    if (!S_ISREG(existing.st_mode)) return writeInPlace(name, bytes);
    // A link stays a link: the file that it leads to is replaced.
    char resolved[PATH_MAX];
    if (::realpath(name.c_str(), resolved) == nullptr) return errno;
    if (::access(resolved, W_OK) != 0) return errno;
    return replaceFile(resolved, bytes, &existing);
}

}  // namespace

void showFileMessage(Output& messages, std::string_view name, std::string_view message) {
    messages.write(name);
    messages.write(": ");
    messages.write(message);
    messages.write('\n');
}

std::optional<Input> readInput(const std::string& name, Output& messages) {
    Input input{name, {}};
    int error = 0;
    if (name == kStandardStream) {
        error = readAll(STDIN_FILENO, input.bytes);
    } else {
        const Descriptor file(::open(name.c_str(), O_RDONLY | O_CLOEXEC));
        error = file.isOpen() ? readAll(file.number(), input.bytes) : errno;
    }
    if (error == 0) return input;
    showFileMessage(messages, name, std::strerror(error));
    return std::nullopt;
}

bool writeFile(const std::string& name, std::string_view bytes, const ProgramOutput& output) {
    if (name == kStandardStream) {
        output.results.write(bytes);
        return true;
    }
    const int error = writeNamed(name, bytes);
    if (error != 0) showFileMessage(output.messages, name, std::strerror(error));
    return error == 0;
}

}  // namespace quorvelin::tool
