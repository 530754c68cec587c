// What the core does for the plugin: logging, tracing, configuration, JSON writing, result texts and the hop to the main
// thread. Declarations only; the core defines them. Plain C++, usable from a .cpp file.
//
// Sizes are part of the contract where the plugin makes the object: the logger, the trace and the JSON writer live on
// the plugin's stack.
#pragma once

#include "VornExport.h"
#include "VornRecords.h"

#include <pthread.h>

#include <string>

namespace Tarvik::Vorn {

// Importance of a log line.
enum ILogLevel : int {
    kLogDebug = 0, // Progress.
    kLogError = 1, // Errors and refusals.
};

// Writes one log line. Short-lived: constructed, asked for its console(), given one writeLog(), destroyed.
// May be used on any thread. The texts given to the constructor must outlive the logger; they are not copied.
class VORN_API VornLogger {
public:
    VornLogger(ILogLevel level, const char* tag, const char* file, const char* function, int line);
    ~VornLogger();
    VornLogger(const VornLogger&) = delete;
    VornLogger& operator=(const VornLogger&) = delete;

    // The object on which to write; valid as long as the logger.
    VornLogger& console();

    // Formats like printf and writes the line. `format` is a literal: texts of a request are arguments, never formats.
    void writeLog(const char* format, ...) __attribute__((format(printf, 2, 3)));

private:
    ILogLevel mLevel;
    const char* mTag;
    const char* mFile;
    const char* mFunction;
    int mLine;
};

// Records a call into the channel's SDK on the core's trace channel. May be used on any thread. The texts given to the
// constructor must outlive the trace; they are not copied.
class VORN_API VornTrace {
public:
    // `seqID`: the request's sequence ID. `extraJson`: a JSON object that names the SDK's method. Both may be empty.
    VornTrace(const char* file, const char* function, int line, const char* seqID, const char* extraJson);

    // Writes the trace under the module's word, such as "FacebookLogin".
    void traceLog(const char* module);

    // Writes which plugin has started: its name, its version, its channel and the SDK's version.
    void tracePlugin(const char* name, const char* version, const char* channel, const char* sdkVersion);

private:
    const char* mFile;
    const char* mFunction;
    int mLine;
    const char* mSeqID;
    const char* mExtraJson;
};

// One instance of T per process, made on first use and never destroyed. Thread-safe.
// The statics are weak and exported, so that the core and the plugin share the instance.
template <class T>
class VORN_API VornSingleton {
public:
    static T* GetInstance() {
        T* instance = __atomic_load_n(&mInstance, __ATOMIC_ACQUIRE);
        if (instance != nullptr) {
            return instance;
        }
        const Lock lock;
        if (mInstance == nullptr) {
            __atomic_store_n(&mInstance, new T(), __ATOMIC_RELEASE);
        }
        return mInstance;
    }

    static T* mInstance;
    static pthread_mutex_t mMutex;

private:
    struct Lock {
        Lock() { pthread_mutex_lock(&mMutex); }
        ~Lock() { pthread_mutex_unlock(&mMutex); }
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;
    };
};

template <class T>
T* VornSingleton<T>::mInstance = nullptr;
template <class T>
pthread_mutex_t VornSingleton<T>::mMutex = PTHREAD_MUTEX_INITIALIZER;

// The game's configuration. Reached through VornSingleton<VornConfigManager>; may be used on any thread.
class VORN_API VornConfigManager {
public:
    VornConfigManager();
    ~VornConfigManager();
    VornConfigManager(const VornConfigManager&) = delete;
    VornConfigManager& operator=(const VornConfigManager&) = delete;

    // The configured value of `key`, or `defaultValue` when the key is absent. A null default counts as empty.
    std::string Get(const std::string& key, const char* defaultValue);

private:
    void* mState;
};

// Writes JSON text, member by member. Not for use by two threads at once.
//
// A key names the next member of the object that is open. Outside any object there is nothing to name, and the key is
// dropped: an object written under an empty or other key at the top stands alone. A null text is written as "".
class VORN_API VornJsonWriter {
public:
    VornJsonWriter();
    ~VornJsonWriter();
    VornJsonWriter(const VornJsonWriter&) = delete;
    VornJsonWriter& operator=(const VornJsonWriter&) = delete;

    // Opens and closes the object that is the document.
    void StartJsonConvert();
    void EndJsonConvert();

    // Opens and closes a nested object; setKey() before objectBegin() names it.
    void objectBegin();
    void objectEnd();
    void setKey(const char* key);

    // Writes one member. `flag` is the core's own; the plugin always passes kJsonTextFlag.
    void convert(const char* key, int value);
    void convert(const char* key, const char* value, int flag);
    void convert(const char* key, const String& value, int flag);

    // Writes a record as a nested object.
    template <class Record>
        requires requires(const Record& record, VornJsonWriter& writer) { record.struct2Json(writer, ""); }
    void convert(const char* key, const Record& record) {
        setKey(key);
        objectBegin();
        record.struct2Json(*this, key);
        objectEnd();
    }

    // The text written so far; the whole document once every object is closed.
    String GetJsonString();

private:
    void* mState;
};

inline constexpr int kJsonTextFlag = 5;

// Kept: "user" stands behind "desc", not in the order of the members; the core's log tools expect it there.
inline void VornFriendReqInfo::struct2Json(VornJsonWriter& writer, const char* /*key*/) const {
    writer.convert("type", type);
    writer.convert("title", title, kJsonTextFlag);
    writer.convert("desc", desc, kJsonTextFlag);
    writer.convert("user", user, kJsonTextFlag);
    writer.convert("imagePath", imagePath, kJsonTextFlag);
    writer.convert("thumbPath", thumbPath, kJsonTextFlag);
    writer.convert("mediaPath", mediaPath, kJsonTextFlag);
    writer.convert("link", link, kJsonTextFlag);
    writer.convert("extraJson", extraJson, kJsonTextFlag);
}

class VORN_API VornJsonManager {
public:
    // The JSON text of a record. With an empty key it is the record's object alone.
    template <class Record>
    static std::string ToJson(const Record& record, const std::string& key) {
        VornJsonWriter writer;
        writer.convert(key.c_str(), record);
        return writer.GetJsonString().toString();
    }
};

class VORN_API VornUtils {
public:
    // The standard text of a result code. Never fails: an unknown code has a text too.
    static std::string GetRetMsg(int code);
};

// Has `fn` called once with some integer and `arg`, later, on the main thread. Does not wait. Any thread.
VORN_API void VornInnerObserverHolderDispatch(void (*fn)(int, void*), void* arg);

} // namespace Tarvik::Vorn
