#pragma once

class QLineEdit;

namespace exifcard {

/// The tags that choose a text field's face; any other keeps its own.
inline constexpr int kRegularTextFieldTag = 300;
inline constexpr int kMediumTextFieldTag = 400;

/// Gives a text field that was just loaded from its interface file its face, by its property "tag", and its
/// placeholder the grey of placeholders.
void awakeTextFieldFromNib(QLineEdit& textField);

} // namespace exifcard
