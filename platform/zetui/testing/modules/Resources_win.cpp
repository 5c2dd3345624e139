// A module that carries resources, those of Resources.rc.
extern "C" {

__declspec(dllexport) int NumberInResources();

int NumberInResources()
{
    return 1;
}
}
