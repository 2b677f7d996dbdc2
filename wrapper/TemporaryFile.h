/// @file
/// Files with names of their own, for applets that hand data to the SDK in files.
#pragma once

namespace quillon {

/// Replaces the six letters X before the last `suffixLength` characters of `fileTemplate` so that no such file exists,
/// creates the file for its owner alone and returns its descriptor. -1 if the template is null (errno is EINVAL then),
/// is too short, lacks the letters, or (its first character is cleared then) if no name was free.
int makeTemporaryFile(char* fileTemplate, int suffixLength);

/// Creates "/tmp/coef-XXXXXX.tiff" with the letters replaced. The path belongs to the caller, who gives it to
/// deleteTempFile; null on failure.
char* createTempFile();
/// Removes the file and releases its path.
void deleteTempFile(char* path);

}  // namespace quillon
