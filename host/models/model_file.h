#pragma once

#include "model.h"

#include <QByteArray>

namespace tarn {

/// The version of the layout that is written, and the only one that is read: such a file is made from the author's own
/// whenever it is missing.
inline constexpr quint32 model_file_version = 1;

/// A model's own file. Numbers are little-endian, floats IEEE; a text is a u16 count of bytes and UTF-8; a hash is 32
/// bytes; a list is a u32 count and its items.
///
///     "TARNMODL", u32 version
///     sources    list of: text name, u8 known, hash (zeros where not known)
///     pictures   list of: text name, u8 known, hash, u32 width, u32 height, rows of red, green, blue, opacity bytes
///     materials  list of: text name, f32 colour[4], i32 picture, i32 normal map, u8 alpha mode, f32 cutoff, u8 two-sided
///     meshes     list of: text name, u32 material, u32 vertices, u8 which (1 tangents, 2 uvs, 4 bones),
///                f32 places[3 each], f32 normals[3 each], f32 tangents[4 each], f32 uvs[2 each],
///                u16 bone numbers[4 each], f32 bone weights[4 each],
///                list of u32 indices, list of bones: u32 node, f32 offset[16], column by column
///     nodes      list of: text name, i32 parent, f32 place[3], f32 turn[4] (w x y z), f32 scale[3], list of u32 meshes
///     actions    list of: text name, f32 duration, list of tracks: u32 node, three lists of keys: u32 count, f32 times,
///                f32 values[3, 4, 3 each]
QByteArray write_model(const ModelData& data);

/// Reads what write_model() wrote. The content is hostile: what is damaged, goes on after its end or is over ModelLimits
/// is refused.
Result<ModelPtr> read_model(const QByteArray& file);

} // namespace tarn
