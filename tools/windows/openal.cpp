// OpenAL for a program that has to start without it: a static library of the functions that SFML
// calls, each of which goes on to OpenAL32.dll. Where Windows finds none, beside the program or in
// its own folder, no audio device opens and every other call does nothing.

#define AL_LIBTYPE_STATIC

#include <AL/al.h>
#include <AL/alc.h>
#include <windows.h>

namespace {

FARPROC find(const char *name) {
    static const HMODULE library = LoadLibraryW(L"OpenAL32.dll");
    return library == nullptr ? nullptr : GetProcAddress(library, name);
}

/// Calls the library's function of the name that `Own` has here; zero without it.
template<auto Own, typename... Arguments>
auto forward(const char *name, Arguments... arguments) {
    static const auto theirs =
        reinterpret_cast<decltype(Own)>(reinterpret_cast<void *>(find(name)));
    using Result = decltype(theirs(arguments...));
    return theirs == nullptr ? Result() : theirs(arguments...);
}

} // namespace

#define FORWARD(name, ...) return forward<&name>(#name __VA_OPT__(, ) __VA_ARGS__)

ALenum alGetError() {
    FORWARD(alGetError);
}

ALboolean alIsExtensionPresent(const ALchar *extname) {
    FORWARD(alIsExtensionPresent, extname);
}

ALenum alGetEnumValue(const ALchar *ename) {
    FORWARD(alGetEnumValue, ename);
}

void alListenerf(ALenum param, ALfloat value) {
    FORWARD(alListenerf, param, value);
}

void alListener3f(ALenum param, ALfloat value1, ALfloat value2, ALfloat value3) {
    FORWARD(alListener3f, param, value1, value2, value3);
}

void alListenerfv(ALenum param, const ALfloat *values) {
    FORWARD(alListenerfv, param, values);
}

void alGenSources(ALsizei n, ALuint *sources) {
    FORWARD(alGenSources, n, sources);
}

void alDeleteSources(ALsizei n, const ALuint *sources) {
    FORWARD(alDeleteSources, n, sources);
}

void alSourcef(ALuint source, ALenum param, ALfloat value) {
    FORWARD(alSourcef, source, param, value);
}

void alSource3f(ALuint source, ALenum param, ALfloat value1, ALfloat value2, ALfloat value3) {
    FORWARD(alSource3f, source, param, value1, value2, value3);
}

void alSourcei(ALuint source, ALenum param, ALint value) {
    FORWARD(alSourcei, source, param, value);
}

void alGetSourcef(ALuint source, ALenum param, ALfloat *value) {
    *value = 0;
    FORWARD(alGetSourcef, source, param, value);
}

void alGetSource3f(ALuint source, ALenum param, ALfloat *value1, ALfloat *value2, ALfloat *value3) {
    *value1 = 0;
    *value2 = 0;
    *value3 = 0;
    FORWARD(alGetSource3f, source, param, value1, value2, value3);
}

void alGetSourcei(ALuint source, ALenum param, ALint *value) {
    *value = 0;
    FORWARD(alGetSourcei, source, param, value);
}

void alSourcePlay(ALuint source) {
    FORWARD(alSourcePlay, source);
}

void alSourceStop(ALuint source) {
    FORWARD(alSourceStop, source);
}

void alSourcePause(ALuint source) {
    FORWARD(alSourcePause, source);
}

void alSourceQueueBuffers(ALuint source, ALsizei nb, const ALuint *buffers) {
    FORWARD(alSourceQueueBuffers, source, nb, buffers);
}

void alSourceUnqueueBuffers(ALuint source, ALsizei nb, ALuint *buffers) {
    FORWARD(alSourceUnqueueBuffers, source, nb, buffers);
}

void alGenBuffers(ALsizei n, ALuint *buffers) {
    FORWARD(alGenBuffers, n, buffers);
}

void alDeleteBuffers(ALsizei n, const ALuint *buffers) {
    FORWARD(alDeleteBuffers, n, buffers);
}

void alBufferData(ALuint buffer, ALenum format, const ALvoid *data, ALsizei size, ALsizei freq) {
    FORWARD(alBufferData, buffer, format, data, size, freq);
}

void alGetBufferi(ALuint buffer, ALenum param, ALint *value) {
    *value = 0;
    FORWARD(alGetBufferi, buffer, param, value);
}

ALCcontext *alcCreateContext(ALCdevice *device, const ALCint *attrlist) {
    FORWARD(alcCreateContext, device, attrlist);
}

ALCboolean alcMakeContextCurrent(ALCcontext *context) {
    FORWARD(alcMakeContextCurrent, context);
}

void alcDestroyContext(ALCcontext *context) {
    FORWARD(alcDestroyContext, context);
}

ALCdevice *alcOpenDevice(const ALCchar *devicename) {
    FORWARD(alcOpenDevice, devicename);
}

ALCboolean alcCloseDevice(ALCdevice *device) {
    FORWARD(alcCloseDevice, device);
}

ALCboolean alcIsExtensionPresent(ALCdevice *device, const ALCchar *extname) {
    FORWARD(alcIsExtensionPresent, device, extname);
}

const ALCchar *alcGetString(ALCdevice *device, ALCenum param) {
    FORWARD(alcGetString, device, param);
}

void alcGetIntegerv(ALCdevice *device, ALCenum param, ALCsizei size, ALCint *values) {
    FORWARD(alcGetIntegerv, device, param, size, values);
}

ALCdevice *alcCaptureOpenDevice(const ALCchar *devicename, ALCuint frequency, ALCenum format,
                                ALCsizei buffersize) {
    FORWARD(alcCaptureOpenDevice, devicename, frequency, format, buffersize);
}

ALCboolean alcCaptureCloseDevice(ALCdevice *device) {
    FORWARD(alcCaptureCloseDevice, device);
}

void alcCaptureStart(ALCdevice *device) {
    FORWARD(alcCaptureStart, device);
}

void alcCaptureStop(ALCdevice *device) {
    FORWARD(alcCaptureStop, device);
}

void alcCaptureSamples(ALCdevice *device, ALCvoid *buffer, ALCsizei samples) {
    FORWARD(alcCaptureSamples, device, buffer, samples);
}
