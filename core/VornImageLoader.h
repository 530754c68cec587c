// How the core loads what a path or a URL names, on one thread of its own, one load after the other.
#pragma once

#include "VornExport.h"

#include <functional>

#import <Foundation/Foundation.h>

namespace Tarvik::Vorn {

// What +[VornUtilsIOS loadImageWithUri:complete:] does. The core has no network: only files can be loaded, by an
// absolute path, a path relative to the current directory, or a file URL. What begins like a URL is one; a relative
// path with a colon in its first part is written "./a:b.png". An empty file is loaded as no bytes,
// one of more than 256 MiB not at all.
//
// The error is of domain "VornCore", with an errno value as its code and an English text as its localized description.
void LoadImage(NSString* uri, void (^complete)(BOOL success, NSData* data, NSError* error));

// Returns when every load that was asked for so far has been answered: its block has returned and is released. For
// tests and the simulator; any thread but the one that runs the blocks.
VORN_API void WaitForImageLoads();

// While loads are held, they run only while somebody waits for them: whoever asks decides when they happen. Not held at
// first. Any thread.
VORN_API void SetImageLoadsHeld(bool held);

// How the loader's thread does a load and calls its block: `runner` gets it as a function, to be called once. For a
// simulator that outlives exceptions of what it calls. An empty function, the initial value, stands for a plain call. Any
// thread; the next load is the first that notices.
using ImageLoadRunner = std::function<void(const std::function<void()>& load)>;
VORN_API void SetImageLoadRunner(ImageLoadRunner runner);

} // namespace Tarvik::Vorn
