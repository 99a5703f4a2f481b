#include "headless_person.h"

namespace tarnwick::test {

INSTANTIATE_TYPED_TEST_SUITE_P(Headless, WindowContract, HeadlessPerson);

} // namespace tarnwick::test
