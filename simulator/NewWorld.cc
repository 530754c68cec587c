#include "NewWorld.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

namespace Tarvik::Vorn::Simulator {
namespace {

constexpr std::string_view kEnding = ".world.json";

// JSON has no comments: the notes say what a comment would, and are printed as headings.
constexpr std::string_view kNewWorld =
    R"({ "question": "What reaches the game when the player shares a link and closes the dialog?",
  "setting": {
    "profile": "18.1",
    "configure": {"FACEBOOK_APP_ID": "1234567890", "FACEBOOK_DISPLAYNAME": "My Game"},
    "player": "facebook",
    "apps": {"facebook": true, "messenger": true},
    "queries-schemes": ["fbapi", "fb-messenger-share-api", "fbauth2"],
    "photo-permission": "authorized"
  },
  "steps": [
    {"note": "The setting above is a well set up game; remove what you do not need, or change it to see what breaks"},
    {"launch": {}},

    {"note": "A request, and how Facebook answers what it opens: other outcomes are completed, returned, app-error, error"},
    {"share": {"methodID": 211, "seqID": "share-1", "observer": 31, "type": "link", "link": "https://example.com",
      "answers": [{"answer-share": {"outcome": "cancelled", "after": "3 s"}}]}},

    {"note": "Time is virtual: waiting takes none"},
    {"wait": "10 s"}
  ],
  "expect": {
    "results": [{"observer": 31, "seqID": "share-1", "methodNameID": 211, "retCode": 2, "at": "3 s"}],
    "audit": []
  }
}
)";

} // namespace

std::string WriteNewWorld(const std::string& name, std::string& path) {
    if (name.empty() || name.ends_with("/")) {
        return "\"" + name + "\" is no name for a file; name it after its question, such as share-cancelled";
    }
    path = name.ends_with(kEnding) ? name : name + std::string(kEnding);
    // "x": a file that is there is left as it is.
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "wx"), &std::fclose);
    if (file == nullptr) {
        const bool exists = errno == EEXIST;
        return path + ": " + std::strerror(errno) + "; " +
               (exists ? "choose another name, or remove the file first" : "check the folder and its permissions");
    }
    if (std::fwrite(kNewWorld.data(), 1, kNewWorld.size(), file.get()) != kNewWorld.size() ||
        std::fflush(file.get()) != 0) {
        return path + ": could not be written; check that there is room";
    }
    return "";
}

} // namespace Tarvik::Vorn::Simulator
