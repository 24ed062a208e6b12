#pragma once

#include <utility>

namespace TALLYFORM {

/// Loads all or nothing. Runs `load` on a new object that validates and logs as `object` does, and moves what it then
/// holds into `object` if it gives true; whatever else comes of it, `object` stays as it was. What `load` throws passes
/// through.
///
///     LoadWhole(list, [&](FrequencyStoreList& fresh) { return fresh.LoadXml(path); });
template <class Object, class Load> bool LoadWhole(Object& object, Load load)
{
    Object fresh;
    fresh.SetValidate(object.GetValidate());
    fresh.SetLogger(object.GetLogger());
    const bool isLoaded = load(fresh);
    if (isLoaded)
        object = std::move(fresh);
    return isLoaded;
}

} // namespace TALLYFORM
