// The texts that a soak puts into its requests, each with what is true of it: a model that looked at the texts itself would
// repeat the work of what it judges. Plain C++ values.
#pragma once

#include <string>
#include <vector>

namespace Tarvik::Vorn::Soak {

// What a text is as a URL.
enum class URLKind {
    kNone,    // No URL.
    kWeb,     // http or https.
    kLibrary, // A video of the photo library.
    kFile,    // A file URL.
    kOther,   // Another scheme, or none.
};

struct LinkSample {
    std::string text;
    URLKind url = URLKind::kNone;
};

struct ImageSample {
    std::string path;
    bool isImage = false;
};

struct VideoSample {
    std::string text;
    URLKind url = URLKind::kNone; // Of the text as it is.
    bool isText = true;           // UTF-8.
    bool fileExists = false;
    bool isMovie = false; // One that the photo library takes.
};

struct ExtraSample {
    std::string text;
    bool isVideoFile = false; // Says that the video is no URL.
    bool isBatch = false;     // An invitation to listed users ...
    bool hasUsers = false;    // ... and the list can be used.
};

struct SeqSample {
    std::string text;
    bool isText = true; // UTF-8.
};

struct PermissionSample {
    std::string text;
    bool isAccepted = true;            // By the SDK.
    std::vector<std::string> asked;    // What the login asks for ...
    std::vector<std::string> inGaming; // ... and with gaming permissions.
};

struct Samples {
    std::vector<LinkSample> links;
    std::vector<ImageSample> images;
    std::vector<VideoSample> videos;
    std::vector<ExtraSample> extras;
    std::vector<SeqSample> seqIDs;
    std::vector<PermissionSample> permissions;
};

// All of them. Built once.
const Samples& TheSamples();

} // namespace Tarvik::Vorn::Soak
