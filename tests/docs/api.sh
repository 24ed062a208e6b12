#!/usr/bin/env bash
# The documentation of the interface is written without a warning, and tells of what each kind of row declares.
# usage: api.sh DOXYGEN DOXYFILE HTML
set -euo pipefail
doxygen=$1 doxyfile=$2 html=$3

"$doxygen" "$doxyfile"
declared() {
    local page=$html/classVelmara_1_1$1.html name
    for name in "${@:2}"; do
        grep -E -A1 ">$name</(b|a)>" "$page" | grep 'class="mdescRight">[A-Z]' >/dev/null ||
            { echo "$page has no sentence on $name"; exit 1; }
    done
}
declared Area GetVersion SetName GetName IsNameSet ResetName GetDefaultName IsValidName AppendCoordinate
declared Detection SetStartTime GetStartTime
declared FFM__Settings SetAnalogDemod NameToAnalogDemod AnalogDemodToName GetAnalogDemodAsString SetDetail GetDetail
declared FrequencyStoreEntry InitChoice GetChoiceFrequencyStoreEntry SetShortTime_Settings
declared ToneSpacing AppendValue SetValue
declared Profile__Data SetLocalObjectName GetLocalObjectName
declared Frequency SetUse ReadValuesFromXml
