#include "favorites/Favorites.h"

namespace tarnwick::Favorites {

LinkRecord CurrentLink;
Flag LinkFinished;
Flag RunCompleted;
Flag EndOnMainClose;
Flag SplashDone;

} // namespace tarnwick::Favorites
