// Declares a function of the core's with another parameter, as a library does that was compiled against other headers.
namespace Tarvik::Vorn {

class VornUtils {
public:
    static const char* GetRetMsg(short code);
};

} // namespace Tarvik::Vorn

__attribute__((visibility("default"))) extern "C" const char* VornCallsAnother();

const char* VornCallsAnother() {
    return Tarvik::Vorn::VornUtils::GetRetMsg(1);
}
