/// A program outside the tree: uses each of the libraries, and catches an exception that crosses them.

#include <base/readfile.h>
#include <frequencystore/frequencystore.h>

#include <cstdio>

int main()
{
    ErrorHandler::Instance().SetMask(0);
    TALLYFORM::SetInputLimit(1 << 20);
    Velmara::Coordinate place, again;
    place.SetLongitude(11.5);
    try {
        place.Check();
        return 1;
    } catch (const TALLYFORM::OutOfRangeException& refusal) {
        std::printf("%s\n", refusal.what());
    }
    place.SetLatitude(48.1);
    return again.SetXmlString(place.GetXmlString(), true) && again == place ? 0 : 1;
}
