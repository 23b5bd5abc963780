import { installStandIn, type StandInOptions } from './index.js';

// For a page without a bundler. It finds its options under this name, and leaves the stand-in there.
const page = window as { zelvoraStandIn?: unknown };
page.zelvoraStandIn = installStandIn(page.zelvoraStandIn as StandInOptions | undefined);
