/// What a level shows once the player has seen what to remember.
#pragma once

/// Makes the timer, the button, the reticle, and targets at random places: two right ones more than
/// the player must shoot, and three random ones for each that must be shot. A random one may be
/// right by chance.
void startShootingPhase();
