/** What goes wrong on purpose, so that a page can be tried with it. */
export type Fault = 'noAnswer' | 'noBridge' | 'noActions';

const key = 'ZelvoraStandIn';

/** What lasts while the app runs: a page that is left and entered again finds it as it was. Here it is the tab's. */
export class Session {
    isFooterVisible = true;
    #faults: Fault[] = [];

    constructor() {
        try {
            const [isFooterVisible, faults] = JSON.parse(sessionStorage.getItem(key) ?? '[true, []]');
            this.isFooterVisible = isFooterVisible;
            this.#faults = faults;
        } catch {
            // Where a page may keep nothing, it lasts as long as the page.
        }
    }

    setFooterVisible(visible: boolean): void {
        this.isFooterVisible = visible;
        this.#save();
    }

    has(fault: Fault): boolean {
        return this.#faults.includes(fault);
    }

    setFault(fault: Fault, isOn: boolean): void {
        this.#faults = this.#faults.filter((other) => other !== fault).concat(isOn ? fault : []);
        this.#save();
    }

    #save(): void {
        try {
            sessionStorage.setItem(key, JSON.stringify([this.isFooterVisible, this.#faults]));
        } catch {
            // As above.
        }
    }
}
