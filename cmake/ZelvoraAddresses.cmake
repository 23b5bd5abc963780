# The addresses of the service. Names under ".example" are reserved and never resolve: a release build sets its own.
set(ZELVORA_ADDRESS_PRODUCTION_WEB_HOST "shop.zelvora.example" CACHE STRING "Web host, without scheme and path")
set(ZELVORA_ADDRESS_DEVELOPMENT_WEB_HOST "shop-dev.zelvora.example" CACHE STRING "Web host of the development environment")
set(ZELVORA_ADDRESS_PRODUCTION_API_BASE "https://api.zelvora.example" CACHE STRING "API base URL, without a path")
set(ZELVORA_ADDRESS_DEVELOPMENT_API_BASE "https://api-dev.zelvora.example" CACHE STRING "API base URL of the development environment")
set(ZELVORA_ADDRESS_LOOKUP_ENDPOINT "https://lookup.zelvora.example/" CACHE STRING "URL of the shop-id lookup")
set(ZELVORA_ADDRESS_TRACKING_ENDPOINT "https://collector.zelvora.example/v1/events" CACHE STRING "URL of the tracking collector")
