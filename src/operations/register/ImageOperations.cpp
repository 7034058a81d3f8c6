#include "media/Image.h"
#include "operations/register/Binding.h"
#include "operations/register/Classes.h"

namespace torvex::operations {

ClassEntry imageOperations() {
    return describe<Image>(
        "Image", "Tells the kind and the size of a picture by the first bytes of its file.", {},
        {
            secret(property("filename", &Image::filename, &Image::setFilename,
                            "The file; setting it reads the picture.")),
            secret(property("filetype", &Image::filetype,
                            "\"GIF\", \"BMP\", \"PNG\" or \"JPG\"; empty until a picture was recognised.")),
            secret(property("size", &Image::size, "Bytes of the file.")),
            secret(property("width", &Image::width, "Pixels.")),
            secret(property("height", &Image::height, "Pixels.")),
            secret(property("depth", &Image::depth, "The number of colours.")),
        });
}

}  // namespace torvex::operations
