// The home folder of the user, without which drive C: and the data folder would be elsewhere.
#pragma once

namespace velmora {

/// Where the environment names no home folder by an absolute path, as for what a system starts
/// outside a login, makes it name the one of the user's account; without either it stays as it is.
/// To be called before there are threads.
void provideHome();

} // namespace velmora
