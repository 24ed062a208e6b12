#pragma once

#include "frequencystore/kernel/record.h"

namespace Velmara {

/// A generic shape to look for, with a confidence.
class VELMARA_EXPORT GenericShape : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(GenericShape, "GenericShape", 0xA20791D8)

    VELMARA_VALUE(QString,      Name,       0x8C9FBCA8, mandatory())
    VELMARA_VALUE(unsigned int, Confidence, 0xC681BAB0)
};
VELMARA_EXTERN_RECORD(GenericShape)

/// A shape to look for, with a confidence.
class VELMARA_EXPORT Shape : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Shape, "Shape", 0xADED42D6)

    VELMARA_VALUE(QString,      Name,       0x8C9FBCA8, mandatory())
    VELMARA_VALUE(unsigned int, Confidence, 0xC681BAB0)
};
VELMARA_EXTERN_RECORD(Shape)

/// The shapes a detector is to look for.
class VELMARA_EXPORT ShapeDetectorSettings : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(ShapeDetectorSettings, "ShapeDetectorSettings", 0x8E0BD2FF)

    VELMARA_LIST(GenericShape, GenericShape, 0xC3091215)
    VELMARA_LIST(Shape,        Shape,        0xC1BFB37C)
};
VELMARA_EXTERN_RECORD(ShapeDetectorSettings)

} // namespace Velmara
