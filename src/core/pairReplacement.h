#pragma once

#include <QString>

/// Puts another pair of data files into the place of a folder's pair, so that a kill at any moment leaves a
/// whole pair: the old one or the new one.
///
/// The new pair is completed and synced in a folder of its own within `folder`. Then the old files, with
/// their journals and logs, get second names (hard links, or copies where there are none) in the folder where
/// they are put aside. Then the new catalogue is renamed over the old one, the logs are removed, and the new
/// pictures are renamed. A kill before the first renaming leaves the old pair in place, one after the second
/// the new pair. Between them the new pictures alone stand in the folder of the new pair, which happens at no
/// other moment: whoever meets that finishes the second renaming.
namespace pairReplacement {

/// Endings of the files in which the engine keeps what belongs to a data file: the journal that rolls a
/// killed transaction back, and the write-ahead log in which another program may have left committed rows.
inline constexpr QStringView journal = u"-journal";
inline constexpr QStringView log = u"-wal";
/// The path of such a file of the data file `path`: beside the file itself if `path` is a link.
QString companionOf(const QString& path, QStringView ending);

/// The folder in which a new pair is made, within `folder`. Finishes a former replacement and removes
/// leftovers; the folder itself is not created.
QString makeRoom(const QString& folder);

/// Removes the room of a pair that does not come into place. Failures are skipped.
void giveUp(const QString& folder) noexcept;

/// Replaces the pair of `folder` by the complete and synced one in the folder that `makeRoom` named. The
/// caller holds the lock of `folder`.
/// @param aside folder that is created for the old pair, on the same disk if possible.
/// @return false when there was no file to be put aside.
/// @throws RuntimeError 75 or 61 when that fails; the old pair is then in place, or `finish` is left to do.
bool replace(const QString& folder, const QString& aside);

/// Whether a replacement was killed between its two renamings.
bool isHalf(const QString& folder);
/// The path of the picture file that belongs to the catalogue of `folder`.
QString currentPictures(const QString& folder);
/// Finishes a replacement that was killed between its two renamings, or undoes one killed before the first,
/// if there is one.
/// @throws RuntimeError 75 when that fails.
void finish(const QString& folder);

}  // namespace pairReplacement
