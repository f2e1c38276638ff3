#pragma once

#include "cli/Command.h"

namespace exifcard {

extern const Command kAlbumCommand;
extern const Command kAlbumsCommand;
extern const Command kCompletionCommand;
extern const Command kConversationCommand;
extern const Command kConversationsCommand;
extern const Command kDoctorCommand;
extern const Command kFavouriteCommand;
extern const Command kFieldsCommand;
extern const Command kImportCommand;
extern const Command kKeysCommand;
extern const Command kListCommand;
extern const Command kPropertiesCommand;
extern const Command kRowsCommand;
extern const Command kSendCommand;
extern const Command kSettingsCommand;
extern const Command kShareCommand;
extern const Command kThumbnailCommand;
extern const Command kWatchCommand;

} // namespace exifcard
