#pragma once

#include <plist/plist.h>

namespace exifcard::propertylist {

/// The functions of the property-list library that are used here, under its own names without "plist_".
struct PropertyListLibrary {
    // NOLINTBEGIN(readability-identifier-naming): as the library has them.
    decltype(&plist_array_append_item) array_append_item;
    decltype(&plist_array_new_iter) array_new_iter;
    decltype(&plist_array_next_item) array_next_item;
    decltype(&plist_dict_get_item) dict_get_item;
    decltype(&plist_dict_item_get_key) dict_item_get_key;
    decltype(&plist_dict_new_iter) dict_new_iter;
    decltype(&plist_dict_next_item) dict_next_item;
    decltype(&plist_dict_remove_item) dict_remove_item;
    decltype(&plist_dict_set_item) dict_set_item;
    decltype(&plist_free) free;
    decltype(&plist_from_bin) from_bin;
    decltype(&plist_from_xml) from_xml;
    decltype(&plist_get_bool_val) get_bool_val;
    decltype(&plist_get_data_ptr) get_data_ptr;
    decltype(&plist_get_date_val) get_date_val;
    decltype(&plist_get_node_type) get_node_type;
    decltype(&plist_get_real_val) get_real_val;
    decltype(&plist_get_string_ptr) get_string_ptr;
    decltype(&plist_get_uid_val) get_uid_val;
    decltype(&plist_get_uint_val) get_uint_val;
    decltype(&plist_new_array) new_array;
    decltype(&plist_new_bool) new_bool;
    decltype(&plist_new_data) new_data;
    decltype(&plist_new_date) new_date;
    decltype(&plist_new_dict) new_dict;
    decltype(&plist_new_real) new_real;
    decltype(&plist_new_string) new_string;
    decltype(&plist_new_uid) new_uid;
    decltype(&plist_new_uint) new_uint;
    decltype(&plist_set_key_val) set_key_val;
    decltype(&plist_set_string_val) set_string_val;
    decltype(&plist_to_bin) to_bin;
    decltype(&plist_to_bin_free) to_bin_free;
    decltype(&plist_to_xml) to_xml;
    decltype(&plist_to_xml_free) to_xml_free;
    // NOLINTEND(readability-identifier-naming)
};

/// What the module "propertylist" exports.
using PropertyListLibraryEntry = const PropertyListLibrary*();
constexpr const char* kPropertyListLibraryEntry = "exifcardPropertyListLibrary";

/// The library, loaded at the first list that is written or stands in XML: most starts only read a binary
/// one, which takes no library.
/// @throws std::runtime_error when the module is missing.
const PropertyListLibrary& plist();

} // namespace exifcard::propertylist
