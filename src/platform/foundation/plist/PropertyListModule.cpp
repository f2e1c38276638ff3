// The module "propertylist": the property-list library's functions.
#include "platform/foundation/PropertyListLibrary.h"

extern "C" [[gnu::visibility("default")]] const exifcard::propertylist::PropertyListLibrary*
exifcardPropertyListLibrary() {
    static constexpr exifcard::propertylist::PropertyListLibrary library = {
        .array_append_item = plist_array_append_item,
        .array_new_iter = plist_array_new_iter,
        .array_next_item = plist_array_next_item,
        .dict_get_item = plist_dict_get_item,
        .dict_item_get_key = plist_dict_item_get_key,
        .dict_new_iter = plist_dict_new_iter,
        .dict_next_item = plist_dict_next_item,
        .dict_remove_item = plist_dict_remove_item,
        .dict_set_item = plist_dict_set_item,
        .free = plist_free,
        .from_bin = plist_from_bin,
        .from_xml = plist_from_xml,
        .get_bool_val = plist_get_bool_val,
        .get_data_ptr = plist_get_data_ptr,
        .get_date_val = plist_get_date_val,
        .get_node_type = plist_get_node_type,
        .get_real_val = plist_get_real_val,
        .get_string_ptr = plist_get_string_ptr,
        .get_uid_val = plist_get_uid_val,
        .get_uint_val = plist_get_uint_val,
        .new_array = plist_new_array,
        .new_bool = plist_new_bool,
        .new_data = plist_new_data,
        .new_date = plist_new_date,
        .new_dict = plist_new_dict,
        .new_real = plist_new_real,
        .new_string = plist_new_string,
        .new_uid = plist_new_uid,
        .new_uint = plist_new_uint,
        .set_key_val = plist_set_key_val,
        .set_string_val = plist_set_string_val,
        .to_bin = plist_to_bin,
        .to_bin_free = plist_to_bin_free,
        .to_xml = plist_to_xml,
        .to_xml_free = plist_to_xml_free,
    };
    return &library;
}
