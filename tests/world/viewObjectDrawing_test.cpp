#include "selvane/world/ViewObject.h"

#include "selvane/display/DisplayManager.h"
#include "selvane/world/WorldManager.h"
#include "support/WindowTest.h"

#include <map>

namespace sv {
namespace {

class ViewObjectDrawing : public test::WindowTest {
  protected:
    ViewObjectDrawing() {
        world.startUp();
        world.setBoundary({{0, 0}, 200, 100});
        world.setView({{0, 0}, 78, 24});
    }

    ~ViewObjectDrawing() override { world.shutDown(); }

    /// The middles of the sixths of 78 columns are columns too.
    void startDisplay() {
        WindowTest::startDisplay("window_horizontal_pixels:1014,window_horizontal_chars:78");
    }

    /// Expects the world to show these rows of the view and nothing else.
    void expectShown(const std::map<int, std::string> &rows, Color color = WHITE) {
        DisplayManager &display = DisplayManager::getInstance();
        world.draw();
        const sf::Image seen = picture();
        display.swapBuffers();
        for (const auto &[row, text] : rows) {
            // Words with two blanks between them: a blank that is drawn covers what is beside it.
            for (std::size_t i = text.find_first_not_of(' '); i < text.size();) {
                const std::string word = text.substr(i, text.find("  ", i) - i);
                const Vector in_view{static_cast<float>(i), static_cast<float>(row)};
                display.drawString(world.getView().corner + in_view, word, LEFT_JUSTIFIED, color);
                i = text.find_first_not_of(' ', i + word.size());
            }
        }
        EXPECT_EQ(test::difference(seen, picture()).pixels, 0);
        display.swapBuffers();
    }

    WorldManager &world = WorldManager::getInstance();
};

TEST_F(ViewObjectDrawing, nine_places_with_and_without_a_border_as_they_show) {
    startDisplay();
    std::vector<ViewObject *> labels;
    for (int location = TOP_LEFT; location <= BOTTOM_RIGHT; ++location) {
        labels.push_back(new ViewObject);
        labels.back()->setViewString("P" + std::to_string(location));
        labels.back()->setValue(location * 11);
        labels.back()->setLocation(location);
    }
    const std::string top = "          ------                    -------                   -------";
    const std::string edge =
        "          -------                   -------                   -------";
    expectShown({{0, top},
                 {1, "         | P0 0 |                  | P1 11 |                 | P2 22 |"},
                 {2, top},
                 {11, edge},
                 {12, "         | P3 33 |                 | P4 44 |                 | P5 55 |"},
                 {13, edge},
                 {21, edge},
                 {22, "         | P6 66 |                 | P7 77 |                 | P8 88 |"},
                 {23, edge}});
    for (ViewObject *p_label : labels)
        p_label->setBorder(false);
    expectShown({{0, "           P0 0                      P1 11                     P2 22"},
                 {11, "           P3 33                     P4 44                     P5 55"},
                 {23, "           P6 66                     P7 77                     P8 88"}});
}

TEST_F(ViewObjectDrawing, it_stays_in_its_place_while_the_world_scrolls_and_shows_its_colour) {
    startDisplay();
    auto *p_label = new ViewObject;
    p_label->setViewString("GO!");
    p_label->setDrawValue(false);
    p_label->setColor(CYAN);
    p_label->setPosition({3, 4});
    world.setView({{50, 60}, 78, 24});
    expectShown({{3, " -----"}, {4, "| GO! |"}, {5, " -----"}}, CYAN);
}

} // namespace
} // namespace sv
