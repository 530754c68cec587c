#include "VornImageLoader.h"

#include "VornRetainPtr.h"
#include "VornText.h"

#include <cerrno>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <fcntl.h>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <strings.h>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace Tarvik::Vorn {
namespace {

using CompleteBlock = void (^)(BOOL, NSData*, NSError*);

NSString* const kErrorDomain = @"VornCore";

// Why nothing was loaded.
struct Fault {
    int code = 0; // An errno value.
    std::string reason;
};

Fault SystemFault(int code) {
    return {code, std::generic_category().message(code)};
}

#pragma mark - From the URI to the path

bool IsLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

// What stands before the colon; empty when the text does not begin like a URL.
std::string_view SchemeOf(std::string_view uri) {
    if (uri.empty() || !IsLetter(uri.front())) {
        return {};
    }
    for (size_t i = 1; i < uri.size(); ++i) {
        const char character = uri[i];
        if (character == ':') {
            return uri.substr(0, i);
        }
        const bool isDigit = character >= '0' && character <= '9';
        if (!IsLetter(character) && !isDigit && character != '+' && character != '-' && character != '.') {
            return {};
        }
    }
    return {};
}

bool IsScheme(std::string_view scheme, const std::string& name) {
    return scheme.size() == name.size() && strncasecmp(scheme.data(), name.data(), name.size()) == 0;
}

std::optional<int> HexDigit(char digit) {
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    const char small = static_cast<char>(digit | 0x20);
    return small >= 'a' && small <= 'f' ? std::optional(small - 'a' + 10) : std::nullopt;
}

// Empty when a percent sign has no two digits behind it, or stands for the NUL that would end the path early.
std::optional<std::string> PercentDecoded(std::string_view text) {
    std::string decoded;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            decoded += text[i];
            continue;
        }
        const std::optional<int> high = i + 2 < text.size() ? HexDigit(text[i + 1]) : std::nullopt;
        const std::optional<int> low = i + 2 < text.size() ? HexDigit(text[i + 2]) : std::nullopt;
        if (!high || !low || *high + *low == 0) {
            return std::nullopt;
        }
        decoded += static_cast<char>(*high * 16 + *low);
        i += 2;
    }
    return decoded;
}

// `rest` is what stands behind "file:".
std::optional<std::string> PathOfFileURL(std::string_view rest, Fault& fault) {
    if (rest.starts_with("//")) {
        const size_t slash = rest.find('/', 2);
        const std::string_view host = rest.substr(2, slash == std::string_view::npos ? slash : slash - 2);
        if (!host.empty() && !IsScheme(host, "localhost")) {
            fault = {EINVAL, "the file URL names another host"};
            return std::nullopt;
        }
        rest.remove_prefix(slash == std::string_view::npos ? rest.size() : slash);
    }
    std::optional<std::string> path = PercentDecoded(rest.substr(0, rest.find_first_of("?#")));
    if (!path || !path->starts_with('/')) {
        fault = {EINVAL, path ? "the file URL has no absolute path" : "the file URL has a bad percent sequence"};
        return std::nullopt;
    }
    return path;
}

std::optional<std::string> PathOf(std::string_view uri, Fault& fault) {
    if (uri.empty()) {
        fault = {EINVAL, "the URI is empty"};
        return std::nullopt;
    }
    if (uri.find('\0') != std::string_view::npos) {
        fault = {EINVAL, "the URI has a NUL character"};
        return std::nullopt;
    }
    const std::string_view scheme = SchemeOf(uri);
    if (scheme.empty()) {
        return std::string(uri);
    }
    if (!IsScheme(scheme, "file")) {
        fault = {ENETDOWN, "the reference core is offline and loads files only"};
        return std::nullopt;
    }
    return PathOfFileURL(uri.substr(scheme.size() + 1), fault);
}

#pragma mark - Reading

constexpr off_t kLargestFile = off_t{256} << 20; // Bytes; far beyond any image, and fit for memory.

struct File {
    explicit File(const std::string& path)
        : descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {} // Does not wait for a pipe's writer.
    ~File() {
        if (descriptor >= 0) {
            close(descriptor);
        }
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    const int descriptor;
};

// Nil with the reason in `fault` when the file cannot be read. Autoreleased.
NSData* ReadFile(const std::string& path, Fault& fault) {
    const File file(path);
    struct stat status = {};
    if (file.descriptor < 0 || fstat(file.descriptor, &status) != 0) {
        fault = SystemFault(errno);
        return nil;
    }
    if (!S_ISREG(status.st_mode)) {
        fault = S_ISDIR(status.st_mode) ? SystemFault(EISDIR) : Fault{EINVAL, "not a regular file"};
        return nil;
    }
    if (status.st_size > kLargestFile) {
        fault = SystemFault(EFBIG);
        return nil;
    }
    std::string bytes(static_cast<size_t>(status.st_size), '\0');
    size_t filled = 0;
    while (filled < bytes.size()) {
        const ssize_t count = read(file.descriptor, bytes.data() + filled, bytes.size() - filled);
        if (count < 0 && errno != EINTR) {
            fault = SystemFault(errno);
            return nil;
        }
        if (count == 0) { // Somebody has shortened the file.
            break;
        }
        filled += count > 0 ? static_cast<size_t>(count) : 0;
    }
    return [NSData dataWithBytes:bytes.data() length:filled];
}

#pragma mark - The thread

struct Load {
    RetainPtr<NSString*> uri;
    RetainPtr<CompleteBlock> complete;
};

void Perform(const Load& load) {
    NSString* const uri = load.uri.get();
    const CompleteBlock complete = load.complete.get();
    Fault fault{EINVAL, "the URI is nil"};
    NSData* data = nil;
    if (uri != nil) {
        NSData* const utf8 = [uri dataUsingEncoding:NSUTF8StringEncoding];
        const std::string_view text(static_cast<const char*>([utf8 bytes]), [utf8 length]);
        if (const std::optional<std::string> path = PathOf(text, fault)) {
            data = ReadFile(*path, fault);
        }
    }
    if (data != nil) {
        complete(YES, data, nil);
        return;
    }
    // The URI last: it may hold a NUL.
    NSString* const text = [NSString stringWithFormat:@"Cannot load the image: %@%@", MakeNSString(fault.reason),
                                                      uri == nil ? @"" : [@": " stringByAppendingString:uri]];
    complete(NO, nil,
             [NSError errorWithDomain:kErrorDomain code:fault.code userInfo:@{NSLocalizedDescriptionKey : text}]);
}

// Its thread starts with the first load and waits for more until the process ends.
class Loader {
public:
    void Ask(Load load) {
        const std::lock_guard lock(mMutex);
        if (!mHasThread) {
            std::thread([this] { Run(); }).detach();
            mHasThread = true;
        }
        mLoads.push_back(std::move(load));
        mAsked += 1; // Last: where memory runs out above, nothing was asked for and nobody waits for it.
        mChanged.notify_all();
    }

    void WaitForAnswers() {
        std::unique_lock lock(mMutex);
        const uint64_t asked = mAsked;
        mWaiting += 1;
        mChanged.notify_all();
        mChanged.wait(lock, [&] { return mAnswered >= asked; });
        mWaiting -= 1;
    }

    void Hold(bool held) {
        const std::lock_guard lock(mMutex);
        mHeld = held;
        mChanged.notify_all();
    }

    void SetRunner(ImageLoadRunner runner) {
        const std::lock_guard lock(mMutex);
        mRunner.swap(runner);
    }

private:
    void Run() {
        while (true) {
            @autoreleasepool {
                const Load load = Next(); // Released before the pool is drained, and both before it counts as answered.
                const ImageLoadRunner runner = Runner();
                if (runner) {
                    runner([&load] { Perform(load); });
                } else {
                    Perform(load);
                }
            }
            const std::lock_guard lock(mMutex);
            mAnswered += 1;
            mChanged.notify_all();
        }
    }

    ImageLoadRunner Runner() {
        const std::lock_guard lock(mMutex);
        return mRunner;
    }

    Load Next() {
        std::unique_lock lock(mMutex);
        mChanged.wait(lock, [&] { return !mLoads.empty() && (!mHeld || mWaiting > 0); });
        Load next = std::move(mLoads.front());
        mLoads.pop_front();
        return next;
    }

    std::mutex mMutex; // Guards all below.
    std::condition_variable mChanged;
    std::deque<Load> mLoads;
    uint64_t mAsked = 0;
    uint64_t mAnswered = 0;
    int mWaiting = 0; // Threads in WaitForAnswers.
    bool mHeld = false;
    bool mHasThread = false;
    ImageLoadRunner mRunner;
};

// Never destroyed: its thread does not end.
Loader& TheLoader() {
    static auto& loader = *new Loader;
    return loader;
}

} // namespace

void LoadImage(NSString* uri, CompleteBlock complete) {
    if (complete == nil) {
        return;
    }
    TheLoader().Ask({AdoptNS<NSString*>([uri copy]), AdoptNS<CompleteBlock>([complete copy])});
}

void WaitForImageLoads() {
    TheLoader().WaitForAnswers();
}

void SetImageLoadsHeld(bool held) {
    TheLoader().Hold(held);
}

void SetImageLoadRunner(ImageLoadRunner runner) {
    TheLoader().SetRunner(std::move(runner));
}

} // namespace Tarvik::Vorn
