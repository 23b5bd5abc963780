#pragma once

#include "ZelvoraAdapters/gtk/HostOptions.h"

#include <filesystem>

/// Makes the SDK talk to the example service on this machine, whatever addresses it was built with. `certificates` is
/// the service's data folder.
void useLocalService(zelvora::gtk::HostOptions& options, int port, std::filesystem::path const& certificates);
