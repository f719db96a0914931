/// What the engine asks of OpenGL itself, beside SFML: the system says how it is called.
#pragma once

namespace sv::platform {

/// glDrawArrays().
#ifdef _WIN32
using DrawArrays = void(__stdcall *)(unsigned mode, int first, int count);
#else
using DrawArrays = void (*)(unsigned mode, int first, int count);
#endif

/// GL_QUADS, a mode.
inline constexpr unsigned draw_quads = 7;

} // namespace sv::platform
