/// What a level puts on the screen once everything is to be remembered.
#pragma once

/// Makes timer, button, reticle, two targets more than are to be shot, and three times as many
/// others, all at random places. What is among the others may by chance be right.
void startShootingPhase();
