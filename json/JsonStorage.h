#pragma once
// The RapidJSON types a tree is stored in: UTF-8 values whose strings,
// elements and members live in a pool of 64 KiB blocks.

#include <rapidjson/document.h>

using JsonPool = rapidjson::MemoryPoolAllocator<rapidjson::CrtAllocator>;
using JsonValue = rapidjson::GenericValue<rapidjson::UTF8<>, JsonPool>;
using JsonDocument = rapidjson::GenericDocument<rapidjson::UTF8<>, JsonPool, rapidjson::CrtAllocator>;

/// Containers nested deeper than this are refused by the parser and end the
/// text the writer produces, so neither recurses without bound.
constexpr unsigned kJsonMaxDepth = 512;
