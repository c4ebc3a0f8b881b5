#include "comparison.h"

int main(int argc, char** argv) {
  veldra::bench::AddTextureComparisons();
  veldra::bench::AddModelComparisons();
  veldra::bench::AddStepComparisons();
  veldra::bench::AddMappingComparisons();
  veldra::bench::AddInterchangeComparisons();
  veldra::bench::AddRendererComparisons();
  veldra::bench::AddArchiveComparisons();
#ifdef VELDRA_EDITOR
  veldra::bench::AddListComparisons();
#endif
  veldra::bench::RunComparisons(argc, argv);
  return 0;
}
