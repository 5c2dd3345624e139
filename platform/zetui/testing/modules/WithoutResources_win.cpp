// A module without resources that uses a module with them.
extern "C" {

__declspec(dllimport) int NumberInResources();
__declspec(dllexport) int NumberWithoutResources();

int NumberWithoutResources()
{
    return NumberInResources();
}
}
