#include "cli/Commands.h"

namespace exifcard {

std::span<const Command* const> allCommands() {
    static constexpr const Command* kCommands[] = {
        &kRowsCommand,
        &kShareCommand,
        &kPropertiesCommand,
        &kThumbnailCommand,
        &kKeysCommand,
        &kFieldsCommand,
        &kSettingsCommand,
        &kSendCommand,
        &kConversationCommand,
        &kConversationsCommand,
        &kImportCommand,
        &kWatchCommand,
        &kListCommand,
        &kAlbumsCommand,
        &kAlbumCommand,
        &kFavouriteCommand,
        &kDoctorCommand,
        &kCompletionCommand,
    };
    return kCommands;
}

} // namespace exifcard
