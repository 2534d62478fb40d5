// The smallest application: it links the library and asks a class for its name.

#include <orvane/schedule.h>

#include <iostream>

int main()
{
    CRuntimeClass const * const root = CObject::GetThisClass();
    std::cout << "The root of the model is " << root->getName() << ".\n";
    return CRuntimeClass::FromName("CObject") == root ? 0 : 1;
}
