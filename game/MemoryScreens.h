/// The screens that say what to remember, one at a time, each with the prompt for the key that
/// leads on: S, H, A, P, E and the space bar. Two screens in a row have different keys, so that one
/// press does not dismiss both.
///
/// The world owns them; dismissed ones stay in it, inactive, until the program ends.
#pragma once

#include "selvane/core/Keyboard.h"
#include "selvane/world/ViewObject.h"

#include <string>

/// Makes a new view object show a text at a location, in white and without its value, and registers
/// it for the keys.
void setUpText(sv::ViewObject &screen, sv::ViewObjectLocation location, const std::string &text);

/// A text in the middle. Its key dismisses it and shows what comes next.
class MemoryScreen : public sv::ViewObject {
  public:
    /// 1 for a keyboard event, whatever the key; 0 for any other.
    int eventHandler(const sv::Event *p_event) override;

  protected:
    MemoryScreen(const std::string &text, sv::Keyboard::Key new_key);

  private:
    virtual void showNext() = 0;

    sv::Keyboard::Key key;
};

class LevelScreen : public MemoryScreen {
  public:
    LevelScreen();

  private:
    void showNext() override;
};

class RememberScreen : public MemoryScreen {
  public:
    RememberScreen();

  private:
    void showNext() override;
};

class NumScreen : public MemoryScreen {
  public:
    NumScreen();

  private:
    void showNext() override;
};

class ColorScreen : public MemoryScreen {
  public:
    ColorScreen();

  private:
    void showNext() override;
};

class ShapeScreen : public MemoryScreen {
  public:
    ShapeScreen();

  private:
    void showNext() override;
};

class GoScreen : public MemoryScreen {
  public:
    GoScreen();

  private:
    void showNext() override;
};

/// A framed line at the bottom that names a key. Pressing the key dismisses it.
class Prompt : public sv::ViewObject {
  public:
    /// 1 for a keyboard event, whatever the key; 0 for any other.
    int eventHandler(const sv::Event *p_event) override;

  protected:
    Prompt(const std::string &text, sv::Keyboard::Key new_key);

  private:
    sv::Keyboard::Key key;
};

struct SToContinue : Prompt {
    SToContinue() : Prompt("PRESS S TO CONTINUE", sv::Keyboard::S) {}
};
struct HToContinue : Prompt {
    HToContinue() : Prompt("PRESS H TO CONTINUE", sv::Keyboard::H) {}
};
struct AToContinue : Prompt {
    AToContinue() : Prompt("PRESS A TO CONTINUE", sv::Keyboard::A) {}
};
struct PToContinue : Prompt {
    PToContinue() : Prompt("PRESS P TO CONTINUE", sv::Keyboard::P) {}
};
struct EToContinue : Prompt {
    EToContinue() : Prompt("PRESS E TO CONTINUE", sv::Keyboard::E) {}
};
struct SpaceToContinue : Prompt {
    SpaceToContinue() : Prompt("PRESS SPACE TO CONTINUE", sv::Keyboard::SPACE) {}
};
