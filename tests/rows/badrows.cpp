// Mistakes in a record class that must not compile. Without a case it does.

#include "frequencystore/kernel/implement.h"
#include "frequencystore/records/targetareas.h"

namespace Velmara {

class Trial : public TALLYFORM::ITallyObject
{
    VELMARA_RECORD(Trial, "Trial", 0x00000001)

    VELMARA_VALUE(double, Height, 0x00000002, optional().within(0, 9))
    VELMARA_CHILD(Coordinate, Place, 0x00000003)
    VELMARA_LIST(Coordinate, Points, 0x00000004)
    VELMARA_VALUES(QString, Names, 0x00000005)
#if defined(BAD_tag)
    VELMARA_VALUE(int, Width, 0x00000002)
#elif defined(BAD_range)
    VELMARA_VALUE(int, Width, 0x00000006, optional().within(0, 9))
#elif defined(BAD_value)
    VELMARA_VALUE(Coordinate, Width, 0x00000006)
#elif defined(BAD_child)
    VELMARA_CHILD(double, Width, 0x00000006)
#elif defined(BAD_list)
    VELMARA_LIST(double, Width, 0x00000006)
#elif defined(BAD_values)
    VELMARA_VALUES(Coordinate, Width, 0x00000006)
#elif defined(BAD_attribute)
    VELMARA_CHILD(Coordinate, Width, 0x00000006, attribute())
#elif defined(BAD_alternative)
    VELMARA_ALTERNATIVE(VALUE, double, Width, 0x00000006)
#endif
};

VELMARA_IMPLEMENT_RECORD(Trial)

} // namespace Velmara
