// An OpenAL32.dll that plays nothing, has few of the library's functions, and writes down in
// "openal.txt" what it is asked for.

#include <fstream>

namespace {

constexpr unsigned the_buffer = 11;
constexpr unsigned the_source = 22;
int device = 0;
int context = 0;

template<typename... Parts>
void note(const Parts &...parts) {
    std::ofstream file("openal.txt", std::ios::app);
    ((file << parts << ' '), ...) << '\n';
}

} // namespace

#define OFFERED extern "C" __declspec(dllexport)

OFFERED void *alcOpenDevice(const char *name) {
    note("open", name == nullptr ? "the default" : name);
    return &device;
}

OFFERED void *alcCreateContext(void *of, const int *attributes) {
    note("context", of == &device, attributes == nullptr);
    return &context;
}

OFFERED char alcMakeContextCurrent(void *wanted) {
    note("current", wanted == &context);
    return 1;
}

OFFERED void alListener3f(int /*parameter*/, float x, float y, float z) {
    note("listen at", x, y, z);
}

OFFERED void alGenBuffers(int count, unsigned *buffers) {
    note("buffers", count);
    *buffers = the_buffer;
}

OFFERED void alBufferData(unsigned buffer, int /*format*/, const void *data, int bytes, int rate) {
    note("samples", buffer, *static_cast<const short *>(data), bytes, rate);
}

OFFERED void alGenSources(int count, unsigned *sources) {
    note("sources", count);
    *sources = the_source;
}

OFFERED void alSourcePlay(unsigned source) {
    note("play", source);
}
