// A frame of 80 by 24 characters, drawn as the display manager does it, and with two SFML draws for
// each character, and by libtcod, a yardstick from outside. Needs a display; tools/with-display has
// one without a graphics card, where the difference decides whether a step ends in time.

#include "selvane/core/Config.h"
#include "selvane/display/DisplayManager.h"

#include <SFML/Graphics/Font.hpp>
#include <SFML/Graphics/RectangleShape.hpp>
#include <SFML/Graphics/RenderWindow.hpp>
#include <SFML/Graphics/Text.hpp>
#include <benchmark/benchmark.h>
#include <string_view>
#ifdef BENCH_LIBTCOD
#include <libtcod.h>
#endif

namespace {

using sv::DisplayManager;

constexpr char font_file[] = "/usr/share/fonts/truetype/inconsolata/Inconsolata.otf";
constexpr int columns = 80;
constexpr int rows = 24;
constexpr int character_size = 25;

/// A frame that is the same as the last would not be drawn.
int frame_number = 0;

char characterAt(int column, int row) {
    return static_cast<char>('!' + (column + row * 7 + frame_number % 2) % 94);
}

sv::Color colorAt(int column, int row) {
    return static_cast<sv::Color>(1 + (column / 3 + row) % 7);
}

/// The first frames take far longer: they fill textures and compile shaders.
template<typename Frame>
void measureFrames(benchmark::State &state, Frame draw_frame) {
    constexpr int first_frames = 20;
    for (int i = 0; i < first_frames; ++i)
        draw_frame();
    for ([[maybe_unused]] auto frame : state)
        draw_frame();
}

class Drawing : public benchmark::Fixture {
  public:
    void SetUp(benchmark::State &state) override {
        sv::Config::getInstance().loadConfig(std::string("font_file:") + font_file);
        if (DisplayManager::getInstance().startUp() != 0) {
            state.SkipWithError("there is no window to draw to");
            return;
        }
        DisplayManager::getInstance().getFlushedWindow()->setVerticalSyncEnabled(false);
    }

    void TearDown(benchmark::State & /*state*/) override {
        DisplayManager::getInstance().shutDown();
    }

  protected:
    /// Calls `draw` for each column and row of a frame, then shows the frame.
    template<typename Draw>
    static void measure(benchmark::State &state, Draw draw, bool is_still = false) {
        if (!DisplayManager::getInstance().isStarted())
            return;
        measureFrames(state, [&] {
            frame_number += is_still ? 0 : 1;
            for (int row = 0; row < rows; ++row)
                for (int column = 0; column < columns; ++column)
                    draw(column, row);
            DisplayManager::getInstance().swapBuffers();
        });
    }
};

BENCHMARK_DEFINE_F(Drawing, collected)(benchmark::State &state) {
    DisplayManager &display = DisplayManager::getInstance();
    measure(state, [&](int column, int row) {
        display.drawCh({static_cast<float>(column), static_cast<float>(row)},
                       characterAt(column, row), colorAt(column, row));
    });
}
BENCHMARK_REGISTER_F(Drawing, collected)->Unit(benchmark::kMillisecond)->UseRealTime();

/// With `utf8:true,`: the same, each cell with a background, and every twentieth a wall. The
/// argument is how many cells beside each other have the same background; those are drawn as one.
class ColoredDrawing : public Drawing {
  public:
    void SetUp(benchmark::State &state) override {
        sv::Config::getInstance().loadConfig("utf8:true,");
        Drawing::SetUp(state);
    }

    void TearDown(benchmark::State &state) override {
        Drawing::TearDown(state);
        sv::Config::getInstance().loadConfig("utf8:false,");
    }
};

BENCHMARK_DEFINE_F(ColoredDrawing, collected)(benchmark::State &state) {
    constexpr std::u32string_view walls =
        U"\u2500\u2502\u250C\u2510\u2514\u2518\u2550\u2551\u2554\u255D\u2588\u2592";
    DisplayManager &display = DisplayManager::getInstance();
    const auto alike = static_cast<int>(state.range(0));
    measure(state, [&](int column, int row) {
        const sv::Vector at{static_cast<float>(column), static_cast<float>(row)};
        const auto shade = static_cast<unsigned char>(20 + (column / alike * 7 + row) % 40);
        const sv::Rgb background(shade, 20, 60);
        const auto number = static_cast<std::size_t>(column + row * 7);
        if (number % 20 == 0)
            display.drawCh(at, walls[number / 20 % walls.size()], colorAt(column, row), background);
        else
            display.drawCh(at, characterAt(column, row), colorAt(column, row), background);
    });
}
BENCHMARK_REGISTER_F(ColoredDrawing, collected)
    ->Arg(1)
    ->Arg(3)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

/// The engine's own work for a frame, without SFML's and the graphics driver's.
BENCHMARK_DEFINE_F(Drawing, still)(benchmark::State &state) {
    DisplayManager &display = DisplayManager::getInstance();
    measure(
        state,
        [&](int column, int row) {
            display.drawCh({static_cast<float>(column), static_cast<float>(row)},
                           characterAt(column, row), colorAt(column, row));
        },
        true);
}
BENCHMARK_REGISTER_F(Drawing, still)->Unit(benchmark::kMicrosecond)->UseRealTime();

BENCHMARK_DEFINE_F(Drawing, nothing)(benchmark::State &state) {
    measure(state, [](int /*column*/, int /*row*/) {});
}
BENCHMARK_REGISTER_F(Drawing, nothing)->Unit(benchmark::kMillisecond)->UseRealTime();

BENCHMARK_DEFINE_F(Drawing, character_by_character)(benchmark::State &state) {
    sf::RenderWindow *window = DisplayManager::getInstance().getFlushedWindow();
    sf::Font font;
    if (!window || !font.loadFromFile(font_file)) {
        state.SkipWithError("there is no window or no font");
        return;
    }
    const sf::Vector2f cell(sv::charWidth(), sv::charHeight());
    sf::RectangleShape rectangle(cell);
    rectangle.setFillColor(sf::Color::Black);
    sf::Text text("", font, character_size);
    text.setStyle(sf::Text::Bold);
    measure(state, [&](int column, int row) {
        const sf::Vector2f pixel(static_cast<float>(column) * cell.x,
                                 static_cast<float>(row) * cell.y);
        rectangle.setPosition(pixel.x - cell.x / 10, pixel.y + cell.y / 5);
        window->draw(rectangle);
        unsigned char r = 0;
        unsigned char g = 0;
        unsigned char b = 0;
        sv::colorToRGB(colorAt(column, row), r, g, b);
        text.setString(characterAt(column, row));
        text.setPosition(pixel);
        text.setFillColor(sf::Color(r, g, b));
        window->draw(text);
    });
}
BENCHMARK_REGISTER_F(Drawing, character_by_character)->Unit(benchmark::kMillisecond)->UseRealTime();

#ifdef BENCH_LIBTCOD
/// Its cells are 13 by 32 pixels: they have no fractions.
void libtcod(benchmark::State &state, TCOD_renderer_t renderer) {
    const tcod::TilesetPtr tiles(TCOD_load_truetype_font_(font_file, 13, 32));
    TCOD_ContextParams wanted{};
    wanted.tcod_version = TCOD_COMPILEDVERSION;
    wanted.columns = columns;
    wanted.rows = rows;
    wanted.renderer_type = renderer;
    wanted.tileset = tiles.get();
    TCOD_Context *made = nullptr;
    if (TCOD_context_new(&wanted, &made) < 0) {
        state.SkipWithError("there is no window to draw to");
        return;
    }
    const tcod::ContextPtr context(made);
    const tcod::ConsolePtr console(TCOD_console_new(columns, rows));
    measureFrames(state, [&] {
        ++frame_number;
        for (int row = 0; row < rows; ++row)
            for (int column = 0; column < columns; ++column) {
                TCOD_color_t color{};
                sv::colorToRGB(colorAt(column, row), color.r, color.g, color.b);
                TCOD_console_put_rgb(console.get(), column, row, characterAt(column, row), &color,
                                     nullptr, TCOD_BKGND_SET);
            }
        TCOD_context_present(context.get(), console.get(), nullptr);
    });
}
BENCHMARK_CAPTURE(libtcod, opengl, TCOD_RENDERER_OPENGL)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(libtcod, opengl2, TCOD_RENDERER_OPENGL2)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
#endif

} // namespace
