#pragma once

namespace TOLVGraphing::app {

// Where the user's files lie: the toolkit follows the variables XDG_CONFIG_HOME, XDG_CACHE_HOME, XDG_DATA_HOME and XDG_STATE_HOME, but for two things.

/// Takes those that are no absolute path out of the environment: they do not count. To be called before there are threads.
void dropRelativeUserFolders();

/// Makes the folder of the settings, and those that hold it, for the user only, where they are missing; folders that are there stay as they are. Settings are those of the names of organisation and application.
/// Where a folder cannot be made there are no settings to be kept, and nothing is said.
void makeSettingsFolder();

} // namespace TOLVGraphing::app
