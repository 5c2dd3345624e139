// A module without resources that uses a module with them.
extern "C" {

void AddressInResources();

__attribute__((visibility("default"))) void AddressWithoutResources()
{
    AddressInResources();
}
}
